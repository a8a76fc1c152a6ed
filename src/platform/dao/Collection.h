#pragma once

#include "platform/dao/DaoError.h"

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace Dao {

// An ordered collection of engine objects, found by position or by name without regard to
// case, as TableDefs, Fields, Indexes, Properties and QueryDefs are. A collection of an
// object in the file reads the file each time it is asked (another copy of the program
// may have changed it); a collection of an object not yet appended holds its items itself
// until the owner is appended.
template <class T> class Collection
{
public:
    using Pointer = std::shared_ptr<T>;
    using Loader = std::function<std::vector<Pointer>()>;
    using Appender = std::function<void(const Pointer&)>;
    using Remover = std::function<void(const Pointer&)>;

    Collection() = default;
    explicit Collection(int missingNameError)
        : m_missingName(missingNameError)
    { }

    int Count() const { return static_cast<int>(items().size()); }

    // Throws DaoError 3265 (item not found) for a position or name that is not there; a
    // Properties collection says 3270 (property not found) for a name instead.
    Pointer Item(int index) const
    {
        const std::vector<Pointer> all = items();
        if (index < 0 || index >= static_cast<int>(all.size()))
            throw DaoError::make(DaoError::ItemNotFound);
        return all[static_cast<size_t>(index)];
    }
    Pointer Item(const QString& name) const
    {
        if (Pointer found = Find(name))
            return found;
        throw DaoError::make(m_missingName);
    }
    Pointer operator()(int index) const { return Item(index); }
    Pointer operator()(const QString& name) const { return Item(name); }

    // The item of that name, or nothing.
    Pointer Find(const QString& name) const
    {
        for (const Pointer& item : items()) {
            if (item->Name().compare(name, Qt::CaseInsensitive) == 0)
                return item;
        }
        return nullptr;
    }
    bool Contains(const QString& name) const { return Find(name) != nullptr; }

    // Throws 3367 when an item of that name is there already.
    void Append(const Pointer& item)
    {
        if (!item)
            throw DaoError::make(DaoError::InvalidArgument);
        if (m_uniqueNames && Contains(item->Name()))
            throw DaoError::make(DaoError::NameExistsInCollection);
        if (m_appender)
            m_appender(item);
        else
            m_items.push_back(item);
    }

    void Delete(const QString& name)
    {
        const Pointer found = Item(name);
        if (m_remover) {
            m_remover(found);
            return;
        }
        std::erase(m_items, found);
    }

    // Takes out this very item (not another of the same name): a closed workspace leaves
    // the engine's Workspaces so.
    void Remove(const Pointer& item) { std::erase(m_items, item); }

    // A snapshot of the items in order.
    std::vector<Pointer> items() const { return m_loader ? m_loader() : m_items; }

    // Used by the owner: from now on the items live in the file.
    void attach(Loader loader, Appender appender, Remover remover)
    {
        m_loader = std::move(loader);
        m_appender = std::move(appender);
        m_remover = std::move(remover);
        m_items.clear();
    }
    bool isAttached() const { return static_cast<bool>(m_loader); }
    // Workspaces may share a name: every card window makes one called "Quorbin".
    void allowSharedNames() { m_uniqueNames = false; }
    void setMissingNameError(int number) { m_missingName = number; }

private:
    std::vector<Pointer> m_items;
    Loader m_loader;
    Appender m_appender;
    Remover m_remover;
    bool m_uniqueNames = true;
    int m_missingName = DaoError::ItemNotFound;
};

} // namespace Dao
