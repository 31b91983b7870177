// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonTree.h"

#include "Host/JsonSerializer/JsonFailure.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace tvx::host
{

namespace
{

// Goes over the bytes of a text and tells how many were read. The parser copies and moves its iterators as it likes.
class CountingIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(pointer place, std::size_t& count) : place_(place), count_(&count) {}

    reference operator*() const { return *place_; }

    CountingIterator& operator++()
    {
        ++place_;
        ++*count_;
        return *this;
    }

    bool operator==(const CountingIterator& other) const { return place_ == other.place_; }

private:
    pointer place_;
    std::size_t* count_;
};

// Builds the tree out of what the parser tells, and stops the parser at the first thing that is wrong.
class TreeBuilder final : public Json::json_sax_t
{
public:
    TreeBuilder(std::string_view text, Json& root) : text_(text), root_(root) {}

    // What is wrong, or the empty text.
    std::string Build()
    {
        CountingIterator first(text_.data(), read_);
        const CountingIterator last(text_.data() + text_.size(), read_);
        if (Json::sax_parse(first, last, this) && !root_.is_object())
            Refuse("the text does not hold an object", 0);
        return problem_;
    }

    bool null() override { return Add(nullptr) != nullptr; }
    bool boolean(bool value) override { return Add(value) != nullptr; }
    bool number_integer(number_integer_t value) override { return Add(value) != nullptr; }
    bool number_unsigned(number_unsigned_t value) override { return Add(value) != nullptr; }
    bool number_float(number_float_t value, const string_t&) override { return Add(value) != nullptr; }
    bool string(string_t& value) override { return Add(std::move(value)) != nullptr; }
    bool binary(binary_t&) override { return false; }  // JSON has none
    bool start_object(std::size_t) override { return Open(Json::object()); }
    bool start_array(std::size_t) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override
    {
        const auto [member, isNew] = open_.back()->emplace(name, nullptr);
        member_ = &*member;
        return isNew || Refuse("the name " + QuoteForProblem(name) + " stands twice in an object", read_);
    }

    bool parse_error(std::size_t position, const std::string&, const Json::exception&) override
    {
        return Refuse("the text is not JSON", position);
    }

private:
    // Where the value has its place: the next item of an array, or the member whose name was read last.
    Json* Add(Json value)
    {
        Json* place = open_.empty() ? &root_ : member_;
        if (!open_.empty() && open_.back()->is_array())
            place = &open_.back()->emplace_back();
        *place = std::move(value);
        return place;
    }

    bool Open(Json value)
    {
        if (open_.size() == MaxJsonNesting)
            return Refuse("the text is nested deeper than " + std::to_string(MaxJsonNesting) + " levels", read_);
        open_.push_back(Add(std::move(value)));
        return true;
    }

    bool Close()
    {
        open_.pop_back();
        return true;
    }

    //   read  how many bytes were read, the last of which is the one concerned
    bool Refuse(const std::string& what, std::size_t read)
    {
        const auto before = text_.substr(0, read == 0 ? 0 : read - 1);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const auto column = before.size() - (before.rfind('\n') + 1) + 1;  // npos + 1 is 0
        problem_ = what + ": line " + std::to_string(line) + ", column " + std::to_string(column);
        return false;
    }

    std::string_view text_;
    Json& root_;
    std::size_t read_ = 0;
    std::vector<Json*> open_;
    Json* member_ = nullptr;
    std::string problem_;
};

}  // namespace

std::string ParseJson(std::string_view text, Json& tree)
{
    return TreeBuilder(text, tree).Build();
}

}  // namespace tvx::host
