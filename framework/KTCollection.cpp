// SPDX-License-Identifier: MIT
// Collections of property-group items.
#include "framework/KTCollection.h"

#include <string>

#include "framework/FXError.h"

namespace framix {

TKTCollectionItem::TKTCollectionItem(TKTCollection& collection)
    : TKTPersistentNotify(&collection, collection.Lock(),
                          [&collection](TKTPersistent&) { collection.ItemChanged(); }),
      FCollection(collection)
{
}

const TFXClassInfo& TKTCollectionItem::ClassInfo()
{
    static const TFXClassInfo info{"TKTCollectionItem", &TKTPersistentNotify::ClassInfo(), {}};
    return info;
}

int TKTCollectionItem::GetIndex() const
{
    auto guard = Lock().Read();
    for (int i = 0; i < FCollection.Count(); ++i)
        if (&FCollection.GetItem(i) == this)
            return i;
    return -1;
}

TKTCollection::TKTCollection(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange,
                             TItemFactory factory)
    : TKTPersistentNotify(owner, lock, std::move(onChange)), FFactory(std::move(factory))
{
}

const TFXClassInfo& TKTCollection::ClassInfo()
{
    static const TFXClassInfo info{"TKTCollection", &TKTPersistentNotify::ClassInfo(), {}};
    return info;
}

int TKTCollection::Count() const
{
    auto guard = Lock().Read();
    return int(FItems.size());
}

TKTCollectionItem& TKTCollection::GetItem(int index) const
{
    auto guard = Lock().Read();
    if (index < 0 || std::size_t(index) >= FItems.size())
        throw EFXError("Collection index " + std::to_string(index) + " out of range (count " +
                       std::to_string(FItems.size()) + ")");
    return *FItems[std::size_t(index)];
}

TKTCollectionItem& TKTCollection::Add()
{
    auto guard = Lock().Write();
    FItems.push_back(FFactory(*this));
    Changed();
    return *FItems.back();
}

void TKTCollection::Delete(int index)
{
    auto guard = Lock().Write();
    GetItem(index);  // validates the index
    FItems.erase(FItems.begin() + index);
    Changed();
}

void TKTCollection::Clear()
{
    auto guard = Lock().Write();
    if (FItems.empty())
        return;
    FItems.clear();
    Changed();
}

void TKTCollection::Assign(const TKTPersistent& source)
{
    const auto* other = dynamic_cast<const TKTCollection*>(&source);
    if (!other || other == this)
        return;
    auto guard = Lock().Write();
    FItems.clear();
    for (int i = 0; i < other->Count(); ++i) {
        FItems.push_back(FFactory(*this));
        FItems.back()->Assign(other->GetItem(i));
    }
    Changed();
}

} // namespace framix
