// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HostString.h"
#include "Interfaces/ISerializer.h"
#include "Interfaces/IVariant.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/Walk.h"

#include <array>
#include <optional>
#include <string>
#include <variant>

namespace tvx::fuzz
{

// A text of ours that variants share, by its place in the pool; the number 0 is null.
struct SharedText
{
    std::size_t place;

    bool operator==(const SharedText&) const = default;
};

// What a variant was made from: at the end the number of an object in the pool, and a text that it shares instead of having
// one of its own.
using Value = std::variant<bool, std::int32_t, float, double, std::string, std::size_t, SharedText>;

// The tag of variants of the value.
std::int32_t GetType(const Value& value);

// What variants of a walk have in common, and how what they hold is seen.
class VariantValues
{
public:
    static constexpr std::size_t TextCount = 4;

    explicit VariantValues(check::Trial& trial);

    const ObjectPool& GetObjects() const { return objects_; }
    IString* GetText(std::size_t place) const { return texts_[place].Get(); }

    // The type and the value.
    void Compare(IVariant& variant, const Value& due) const;

    // Asks each getter for what it has to refuse.
    void AskInVain(IVariant& variant, const Value& held, std::uint32_t number) const;

    // Each text of ours has its own reference here and as many as a model counts elsewhere.
    template <class Count>
    void CompareTexts(Count&& count) const
    {
        for (std::size_t text = 1; text < TextCount; ++text)
            trial_.Equal("the references on text " + std::to_string(text), texts_[text]->GetRefCount(),
                         1 + static_cast<std::uint32_t>(count(text)));
    }

    // Writes the value as a variant of it does. A text must not be null.
    void Write(const Value& value, ISerializer& writer) const;

    // A record of any type, also of one that there is not, with a value of any kind or without one.
    Ref<check::ScriptedReader> MakeRecord(const Step& step) const;

    // What a record is read as; nothing when there is no such type. A value of another kind is no value.
    std::optional<Value> Foresee(const check::ScriptedReader& record) const;

private:
    check::Trial& trial_;
    ObjectPool objects_;
    std::array<Ref<host::HostString>, TextCount> texts_;
};

}  // namespace tvx::fuzz
