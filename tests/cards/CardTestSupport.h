#pragma once

#include "cards/CardDatabase.h"
#include "platform/dao/DaoError.h"

#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

namespace CardTest {

inline int ErrorNumber(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Dao::DaoError& error) {
        return error.number();
    }
    return 0;
}

// A folder of its own and an engine that waits only briefly for a busy file.
class CardTestBase : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        m_engine.SetBusyTimeout(50);
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    Dao::DBEngine m_engine;
};

// Adds a card through the card set with values by column.
void AddCard(Bramlet::CardDatabase& cards, const QString& name,
    const QList<std::pair<QString, Runtime::Variant>>& values = {});

// The names of the card set's cards in order.
QStringList CardNames(Bramlet::CardDatabase& cards);

// A card file as the schema before 350 made it: field labels on the table definition,
// single URL and Resource columns, no layout or type properties, no QBVersion. Two cards, Rex
// and Tiddles, with 4.5 in Field3.
void MakeOldCardFile(Dao::DBEngine& engine, const QString& path);

// Keeps every program from writing the file while it lives: by its mode, or for the
// superuser (whom no mode stops) by the file system's immutable flag. active() is false where
// neither works; tests then skip.
class WriteProtection
{
public:
    explicit WriteProtection(const QString& path);
    ~WriteProtection();
    WriteProtection(const WriteProtection&) = delete;
    WriteProtection& operator=(const WriteProtection&) = delete;
    bool active() const { return m_active; }

private:
    QString m_path;
    bool m_active = false;
};

} // namespace CardTest
