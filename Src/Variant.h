// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/IVariant.h"

#include <utility>

namespace tvx
{

// What the six variants share: every getter refuses, until the class of the type overrides its own. Values never change, so
// any thread may read them. A variant writes its tag under "type" and its value under "value".
class Variant : public ClassImpl<Variant, IVariant, ISerializable>, public MostlyUnshared
{
public:
    using Interfaces = InterfaceList<IVariant, IObject, IObjectBase, ISerializable>;

    static constexpr const char FormatId[] = "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1";

    virtual ~Variant() = default;

    Result GetBool(bool* out) override;
    Result GetInt(std::int32_t* out) override;
    Result GetFloat(float* out) override;
    Result GetDouble(double* out) override;
    Result GetString(IString** out) override;
    Result GetObject(IObject** out) override;

    Result GetFormatId(IString** out) override;
    Result Serialize(ISerializer* writer) override;

protected:
    Variant() = default;

private:
    virtual void WriteValue(ISerializer& writer) = 0;
};

class BoolVariant final : public Variant
{
public:
    explicit BoolVariant(bool value) noexcept : value_(value) {}

    std::int32_t GetType() override;
    Result GetBool(bool* out) override;

private:
    void WriteValue(ISerializer& writer) override;

    bool value_;
};

class IntVariant final : public Variant
{
public:
    explicit IntVariant(std::int32_t value) noexcept : value_(value) {}

    std::int32_t GetType() override;
    Result GetInt(std::int32_t* out) override;

private:
    void WriteValue(ISerializer& writer) override;

    std::int32_t value_;
};

// Written as a double: no precision is lost, and reading narrows it back to the same float.
class FloatVariant final : public Variant
{
public:
    explicit FloatVariant(float value) noexcept : value_(value) {}

    std::int32_t GetType() override;
    Result GetFloat(float* out) override;

private:
    void WriteValue(ISerializer& writer) override;

    float value_;
};

class DoubleVariant final : public Variant
{
public:
    explicit DoubleVariant(double value) noexcept : value_(value) {}

    std::int32_t GetType() override;
    Result GetDouble(double* out) override;

private:
    void WriteValue(ISerializer& writer) override;

    double value_;
};

// Shares its string, which is null where it was made of a null string or of a document without a value.
class StringVariant final : public Variant
{
public:
    explicit StringVariant(Ref<IString> value) noexcept : value_(std::move(value)) {}

    std::int32_t GetType() override;
    Result GetString(IString** out) override;

private:
    void WriteValue(ISerializer& writer) override;

    Ref<IString> value_;
};

// Shares its object, which may be null.
class ObjectVariant final : public Variant
{
public:
    explicit ObjectVariant(Ref<IObject> value) noexcept : value_(std::move(value)) {}

    std::int32_t GetType() override;
    Result GetObject(IObject** out) override;

private:
    void WriteValue(ISerializer& writer) override;

    Ref<IObject> value_;
};

}  // namespace tvx
