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

} // namespace CardTest
