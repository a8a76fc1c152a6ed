#pragma once

#include "platform/dao/DBEngine.h"
#include "platform/dao/DaoError.h"

#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace DaoTest {

// Runs `action` and returns the engine number it failed with, or 0 when it did not fail.
inline int ErrorNumber(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Dao::DaoError& error) {
        return error.number();
    }
    return 0;
}

// A folder of its own, an engine that waits only briefly for a busy file (the tests that
// meet a locked file should not wait two seconds each) and one workspace.
class DaoTestBase : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        m_engine.SetBusyTimeout(50);
        m_workspace = m_engine.CreateWorkspace(QStringLiteral("Quorbin"), QStringLiteral("Admin"));
        m_engine.Workspaces().Append(m_workspace);
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    Dao::DBEngine m_engine;
    std::shared_ptr<Dao::Workspace> m_workspace;
};

// The pets of a class: a small table with a column of every kind the cards use, filled
// through a recordset. Rows, in name order:
//   Bobcat  "Wild cat"  9  6 Mar 2004        100     off  keyword 12
//   Bubbles "Goldfish"  1  1 Jan 1990        0       Null -
//   Cat[1]  Null        2  5 Mar 2004 18:00  1.5     on   keyword 15
//   R2D2    "Robot"     Null Null            Null    on   -
//   Rex     "Dog"       3  5 Mar 2004        12.5    on   keyword 12
//   Tiddles "cat"       7  31 Dec 1999       3.25    off  keyword 15
void MakePets(Dao::Database& database);

// The card file's keyword table, as a new card file makes it: KeyID a counter and the primary
// key, KeyText a word of up to 20 characters, unique and required, and KeyPicture.
void MakeKeywordTable(Dao::Database& database);

// The names of the cards a recordset holds, in its order, from the first row on.
QStringList Names(Dao::Recordset& recordset, const QString& field = QStringLiteral("CardName"));

} // namespace DaoTest
