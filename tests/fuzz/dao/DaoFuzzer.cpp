// Any bytes as a card database file: opening, reading every table, query and property,
// finding and adding a row must end in a numbered engine error or succeed, never crash or
// read out of bounds; and a file opened read-only must keep every byte it had.
#include "platform/dao/DBEngine.h"
#include "platform/dao/DaoError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

// Rows read per table: enough to walk every page of a fuzzed file, few enough to keep a run
// quick when the input claims millions of rows.
constexpr int RowLimit = 200;

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ReadEverything(Dao::Database& database)
{
    for (const auto& property : database.Properties().items())
        property->Value();
    for (const auto& query : database.QueryDefs().items()) {
        try {
            query->SQL();
            query->OpenRecordset()->RecordCount();
        } catch (const Dao::DaoError&) {
        }
    }
    for (const auto& table : database.TableDefs().items()) {
        try {
            for (const auto& field : table->Fields().items()) {
                field->Type();
                field->Size();
                field->Required();
                field->AllowZeroLength();
                for (const auto& property : field->Properties().items())
                    property->Value();
            }
            for (const auto& index : table->Indexes().items())
                index->Fields().Count();
            auto rows = database.OpenRecordset(u"SELECT * FROM ["_s + table->Name() + u"]"_s);
            const qint64 count = rows->RecordCount();
            qint64 walked = 0;
            while (!rows->IsEOF() && walked < RowLimit) {
                for (const auto& field : rows->Fields().items()) {
                    try {
                        field->Value();
                    } catch (const Dao::DaoError&) {
                    }
                }
                rows->MoveNext();
                ++walked;
            }
            if (walked > count)
                std::abort(); // more rows walked than the recordset counted
            if (rows->Fields().Count() > 0)
                rows->FindFirst(u"["_s + rows->Fields(0)->Name() + u"] LIKE '*a*'"_s);
            auto byIndex = database.OpenRecordset(table->Name());
            const auto indexes = table->Indexes().items();
            if (!indexes.empty()) {
                byIndex->SetIndex(indexes.front()->Name());
                byIndex->Seek(u">="_s, Runtime::Variant(u"a"_s));
            }
        } catch (const Dao::DaoError&) {
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static QTemporaryDir folder;
    const QString path = folder.filePath(u"fuzz.qnd"_s);
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
        QFile::remove(folder.filePath(name));
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return 0;
    }

    Dao::DBEngine engine;
    engine.SetBusyTimeout(0);
    try {
        auto database = engine.DefaultWorkspace()->OpenDatabase(path, false, true);
        ReadEverything(*database);
        database->Close();
    } catch (const Dao::DaoError&) {
    }
    if (Contents(path) != bytes)
        std::abort(); // reading wrote to the file

    try {
        auto database = engine.DefaultWorkspace()->OpenDatabase(path);
        for (const auto& table : database->TableDefs().items()) {
            try {
                auto rows = database->OpenRecordset(table->Name(), Dao::RecordsetType::Dynaset);
                rows->AddNew();
                for (const auto& field : rows->Fields().items()) {
                    try {
                        field->SetValue(u"1"_s);
                    } catch (const Dao::DaoError&) {
                    }
                }
                rows->Update();
            } catch (const Dao::DaoError&) {
            }
        }
        database->Close();
    } catch (const Dao::DaoError&) {
    }
    return 0;
}
