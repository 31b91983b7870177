// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonOutput.h"

#include "Host/JsonSerializer/JsonText.h"

namespace tvx::host
{

void JsonOutput::Begin()
{
    isEnded_ = false;
    levels_.clear();
    levels_.emplace_back();
    text_ = "{";
}

Result JsonOutput::End()
{
    if (levels_.empty())
        return failure_.Set(TVX_E_FAIL, "a document was ended that had not been begun");
    if (IsInsideObject())
        return failure_.Set(TVX_E_FAIL, "a document was ended inside an object that is being written");
    if (levels_.back().isSequence)
        return failure_.Set(TVX_E_FAIL, "the sequence " + QuoteForProblem(levels_.back().sequence) +
                                            " was still open at the document's end");
    text_ += '}';
    levels_.clear();
    isEnded_ = true;
    return TVX_OK;
}

Result JsonOutput::StartNamed(const char* name)
{
    if (name == nullptr)
        return FailForNull();
    const std::string key(name);
    const auto json = TextToJson(key);
    const char* const problem = GetNameProblem(key, json);
    if (problem != nullptr)
        return failure_.Set(TVX_E_FAIL, "the name " + QuoteForProblem(key) + problem);
    StartValue();
    text_ += json;
    text_ += ':';
    levels_.back().names.insert(key);
    levels_.back().last = key;
    return TVX_OK;
}

Result JsonOutput::StartItem()
{
    if (levels_.empty() || !levels_.back().isSequence)
        return failure_.Set(TVX_E_FAIL, "an item was written where no sequence is open");
    StartValue();
    return TVX_OK;
}

Result JsonOutput::AddNamed(const char* name, std::string_view json)
{
    const auto started = StartNamed(name);
    if (!TVX_FAILED(started))
        text_ += json;
    return started;
}

Result JsonOutput::AddItem(std::string_view json)
{
    const auto started = StartItem();
    if (!TVX_FAILED(started))
        text_ += json;
    return started;
}

Result JsonOutput::BeginSequence(const char* name)
{
    const auto added = AddNamed(name, "[");
    if (!TVX_FAILED(added))
        levels_.push_back({.depth = GetDepth(), .sequence = name, .isSequence = true});
    return added;
}

Result JsonOutput::EndSequence()
{
    if (levels_.empty() || !levels_.back().isSequence)
        return failure_.Set(TVX_E_FAIL, "a sequence was ended where none is open");
    text_ += ']';
    levels_.pop_back();
    return TVX_OK;
}

OpenObject<JsonOutput::Level> JsonOutput::EnterObject()
{
    return {levels_, {.depth = GetDepth() + 1}};
}

std::string JsonOutput::DescribeValue() const
{
    const auto& level = levels_.back();
    if (!level.isSequence)
        return QuoteForProblem(level.last);
    return "item " + std::to_string(level.count) + " of " + QuoteForProblem(level.sequence);
}

Result JsonOutput::FailForNull()
{
    return failure_.Set(TVX_E_POINTER, "a null pointer was written as a name or a text");
}

void JsonOutput::StartValue()
{
    if (text_.back() != '{' && text_.back() != '[')
        text_ += ',';
    ++levels_.back().count;
}

// Null when the name is fine. A name that is no JSON string is not UTF-8.
const char* JsonOutput::GetNameProblem(const std::string& name, const std::string& json) const
{
    if (levels_.empty())
        return " was written outside of a document";
    if (levels_.back().isSequence)
        return " was written into a sequence, whose items have none";
    if (name.starts_with(ReservedMark))
        return " begins with \"$\", which the serializer keeps for itself";
    if (!json.starts_with('"'))
        return " is not UTF-8";
    if (levels_.back().names.contains(name))
        return " was written twice into an object";
    return nullptr;
}

}  // namespace tvx::host
