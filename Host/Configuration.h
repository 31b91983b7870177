// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/ConfigurationFile.h"
#include "Host/Outcome.h"
#include "Interfaces/IConfigurable.h"

#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::host
{

// A configuration read from a file, which is read once and never changes afterwards. Any thread.
//
// Strict about types: nothing is converted. A value of another type than the one that is read is a failure, and a warning
// that names file and key. An INI file does not say types: there a bool is true, yes, on, 1 or false, no, off, 0, in
// letters of any case, a number is decimal, and every value is a text, too.
class Configuration final : public ClassImpl<Configuration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    // Origin is the name of the file, for warnings.
    Configuration(std::string origin, ConfigurationEntries entries);

    // The reads leave out untouched unless they give 0. Flags mean nothing here.
    // Fails: 101, no failure, when the key is absent; -1 for a value of another type; -4 when key or out is null.
    Result GetBool(const char* key, bool* out, std::uint32_t flags) override;
    Result GetInt(const char* key, std::int32_t* out, std::uint32_t flags) override;

    // Fails: as the others, but -1 when the key is absent.
    Result GetString(const char* key, IString** out, std::uint32_t flags) override;

    // Fails: -1 always.
    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }

    // The name of the file.
    const std::string& GetOrigin() const { return origin_; }

    // Everything that the file says, by its keys.
    const ConfigurationEntries& GetEntries() const { return entries_; }

    // What reads so far found to be of another type, each once: one line that says what was due and what is there.
    std::vector<std::string> GetWarnings() const;

private:
    template <class Value, class Convert>
    Result Read(const char* key, Value* out, const char* due, Convert convert);
    void Warn(const std::string& key, const char* due, const ConfigurationValue& found);

    const std::string origin_;
    const ConfigurationEntries entries_;
    mutable std::mutex lock_;
    std::vector<std::string> warnings_;
};

// Reads a JSON or INI file, as ChooseConfigurationFormat says.
// Fails: CannotRead, and BadSettings as ParseConfiguration.
Outcome<Ref<Configuration>> OpenConfiguration(const std::filesystem::path& file);

}  // namespace tvx::host
