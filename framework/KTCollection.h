// SPDX-License-Identifier: MIT
// A published list of items, each a property group of its own.
#pragma once

#include <memory>
#include <vector>

#include "framework/KTPersistent.h"

namespace framix {

class TKTCollection;

// One item; a change of any of its values is reported as a change of the collection.
class TKTCollectionItem : public TKTPersistentNotify {
public:
    explicit TKTCollectionItem(TKTCollection& collection);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TKTCollection& GetCollection() const { return FCollection; }
    int GetIndex() const;

private:
    TKTCollection& FCollection;
};

class TKTCollection : public TKTPersistentNotify {
public:
    using TItemFactory = std::function<std::unique_ptr<TKTCollectionItem>(TKTCollection&)>;

    TKTCollection(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange, TItemFactory factory);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    int Count() const;
    TKTCollectionItem& GetItem(int index) const;  // throws EFXError outside 0..Count-1
    TKTCollectionItem& Add();
    void Delete(int index);
    void Clear();
    // Makes this collection hold as many items as `source`, each assigned from its twin.
    void Assign(const TKTPersistent& source) override;

private:
    friend class TKTCollectionItem;
    void ItemChanged() { Changed(); }

    TItemFactory FFactory;
    std::vector<std::unique_ptr<TKTCollectionItem>> FItems;
};

} // namespace framix
