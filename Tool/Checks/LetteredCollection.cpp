// SPDX-License-Identifier: MIT
#include "Tool/Checks/LetteredCollection.h"

#include <algorithm>

namespace tvx::check
{

std::string NameLetter(char letter)
{
    return letter == '-' ? "null" : std::string(1, letter);
}

LetteredCollection::LetteredCollection(Trial& trial, std::string_view letters)
    : trial_(trial),
      collection_(MakeCollection(trial))
{
    for (const char letter : letters)
        trial.Gives("Add of " + NameLetter(letter), collection_->Add(GetItem(letter)), TVX_OK);
    Holds("Add of each", letters);
}

IObject* LetteredCollection::GetItem(char letter)
{
    if (letter == '-')
        return nullptr;
    auto& item = items_[letter];
    if (!item)
        item = MakeRef<ProbeObject>();
    return item.Get();
}

void LetteredCollection::Holds(const std::string& when, std::string_view letters)
{
    trial_.Equal("GetCount after " + when, collection_->GetCount(), letters.size());
    trial_.Equal("the items after " + when, GetOrder(), letters);
    HasReferences(when, letters);
}

void LetteredCollection::Drop()
{
    collection_ = nullptr;
    HasReferences("the collection's death", "");
}

char LetteredCollection::GetLetter(const IObject* item) const
{
    for (const auto& [letter, made] : items_)
    {
        if (static_cast<const IObject*>(made.Get()) == item)
            return letter;
    }
    return item == nullptr ? '-' : '?';
}

// An item that is refused reads as '!'; no check fills a collection up to the limit.
std::string LetteredCollection::GetOrder() const
{
    constexpr std::uint32_t limit = 10000;
    std::string letters;
    const auto count = std::min(collection_->GetCount(), limit);
    for (std::uint32_t index = 0; index < count; ++index)
    {
        Ref<IObject> item;
        const auto came = collection_->GetItem(index, item.Receive());
        letters += came == TVX_OK ? GetLetter(item.Get()) : '!';
    }
    return letters;
}

void LetteredCollection::HasReferences(const std::string& when, std::string_view letters)
{
    for (const auto& [letter, item] : items_)
    {
        const auto places = static_cast<std::uint32_t>(std::count(letters.begin(), letters.end(), letter));
        trial_.Equal(std::string("the collection's references on ") + letter + " after " + when,
                     item->GetRefCount() - 1, places);
    }
}

}  // namespace tvx::check
