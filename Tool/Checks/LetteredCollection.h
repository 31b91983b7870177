// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/MacroLines.h"
#include "Tool/Checks/Objects.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::check
{

// How sentences name an item: by its letter, or null.
std::string NameLetter(char letter);

// A new collection of the module with items that have a letter each, so that what it holds reads as a text, such as
// "ABA-" with a null item at its end. The check has one reference on each item.
class LetteredCollection
{
public:
    // Appends the items of the letters.
    LetteredCollection(Trial& trial, std::string_view letters);

    ICollection2* operator->() const { return collection_.Get(); }

    // Made when it is first asked for. Borrowed.
    IObject* GetItem(char letter);

    // Expects these items in this order, and one reference on each item for each of its places.
    void Holds(const std::string& when, std::string_view letters);

    // Expects that the call gives the result without a report line, and what is held then.
    template <class Call>
    void Does(const std::string& what, Result expected, std::string_view letters, Call&& call)
    {
        trial_.Gives(what, call(*collection_), expected);
        Holds(what, letters);
    }

    // Expects that the call fails with these report lines and changes nothing.
    template <class Call>
    void Refuses(const std::string& what, const std::vector<std::string>& macros, Result expected, Call&& call)
    {
        const auto before = GetOrder();
        ReportsInOrder(trial_, what, macros, expected, [&] { return call(*collection_); });
        Holds(what, before);
    }

    // Releases the collection, and expects that the references on the items are gone with it.
    void Drop();

private:
    char GetLetter(const IObject* item) const;
    std::string GetOrder() const;
    void HasReferences(const std::string& when, std::string_view letters);

    Trial& trial_;
    std::map<char, Ref<ProbeObject>> items_;
    Ref<ICollection2> collection_;
};

}  // namespace tvx::check
