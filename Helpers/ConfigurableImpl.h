// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Helpers/Results.h"
#include "Interfaces/IConfigurable.h"

namespace tvx
{

// The configuration of T: a face of T that keeps the configuration object and hands it to T::OnConfigure(config).
template <class T>
class ConfigurableImpl : public IConfigurable
{
public:
    Result SetConfiguration(IConfiguration* config) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(config);
        configuration_ = Ref<IConfiguration>(config);
        return static_cast<T*>(this)->OnConfigure(config);
    }

protected:
    ConfigurableImpl() = default;
    ~ConfigurableImpl() = default;

    // Null until the first SetConfiguration; borrowed.
    IConfiguration* GetConfiguration() const noexcept { return configuration_.Get(); }

private:
    Ref<IConfiguration> configuration_;
};

}  // namespace tvx
