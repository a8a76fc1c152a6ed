// 100,000 cards through the engine: importing them, opening the file at its first card,
// walking the whole card set, a LIKE query, FindNext from the top, Min/Max of a field and
// the card export's text (every user field in its display format, as comma-separated text).
// compare_with_sqlite3.sh does the same work with the sqlite3 shell on the same file.
//
// The file is kept in $QUORBIN_BENCH_DAO_DIR when that is set (the comparison script reads
// it there), else in a temporary folder.
#include "platform/dao/DBEngine.h"
#include "platform/runtime/Format.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>
#include <numeric>
#include <random>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace {

constexpr int CardCount = 100000;

QString Folder()
{
    static QTemporaryDir temporary;
    const QString chosen = qEnvironmentVariable("QUORBIN_BENCH_DAO_DIR");
    return chosen.isEmpty() ? temporary.path() : chosen;
}

QString CardFile()
{
    return QDir(Folder()).filePath(u"cards.qnd"_s);
}

const QString CardSet = u"SELECT * FROM Quorbin_Card ORDER BY [CardName]"_s;

void MakeCardTable(Dao::Database& database)
{
    auto card = database.CreateTableDef(u"Quorbin_Card"_s);
    auto name = card->CreateField(u"CardName"_s, Dao::DataType::Text, 30);
    name->SetRequired(true);
    card->Fields().Append(name);
    card->Fields().Append(card->CreateField(u"FreeText"_s, Dao::DataType::Memo));
    card->Fields().Append(card->CreateField(u"Picture"_s, Dao::DataType::LongBinary));
    for (int i = 1; i <= 6; ++i)
        card->Fields().Append(
            card->CreateField(u"Keyword"_s + QString::number(i), Dao::DataType::Long));
    for (int i = 1; i <= 6; ++i) {
        auto field = card->CreateField(u"Field"_s + QString::number(i), Dao::DataType::Text, 50);
        field->SetAllowZeroLength(true);
        card->Fields().Append(field);
    }
    card->Fields().Append(card->CreateField(u"Field7"_s, Dao::DataType::Long));
    card->Fields().Append(card->CreateField(u"Field8"_s, Dao::DataType::Date));
    auto index = card->CreateIndex(u"CardID"_s);
    index->SetPrimary(true);
    index->Fields().Append(index->CreateField(u"CardName"_s));
    card->Indexes().Append(index);
    database.TableDefs().Append(card);
}

// Card i is named "Card 0000i" and its kind ends in i; cards are imported in a shuffled
// order, so that the card set's order is not the order of the rows in the file.
void Import(Dao::Workspace& workspace, const QString& path)
{
    static const QString kinds[] = { u"cat"_s, u"dog"_s, u"rabbit"_s, u"hamster"_s, u"goldfish"_s,
        u"tortoise"_s, u"bobcat"_s, u"pony"_s, u"parrot"_s, u"snake"_s };
    std::vector<int> order(CardCount);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(2004));
    auto database = workspace.CreateDatabase(path);
    MakeCardTable(*database);
    auto cards = database->OpenRecordset(CardSet);
    const auto name = cards->Fields(u"CardName"_s);
    const auto freeText = cards->Fields(u"FreeText"_s);
    const auto kind = cards->Fields(u"Field1"_s);
    const auto number = cards->Fields(u"Field7"_s);
    const auto born = cards->Fields(u"Field8"_s);
    workspace.BeginTrans();
    for (const int i : order) {
        cards->AddNew();
        name->SetValue(u"Card %1"_s.arg(i, 6, 10, QChar(u'0')));
        freeText->SetValue(u"Notes about card "_s + QString::number(i));
        kind->SetValue(kinds[i % 10] + u' ' + QString::number(i));
        number->SetValue(qint64(i * 7919 % 100003));
        born->SetValue(Variant::date(36526 + i % 3653));
        cards->Update();
    }
    workspace.CommitTrans();
    database->Close();
}

struct Engine
{
    Dao::DBEngine engine;
    std::shared_ptr<Dao::Workspace> workspace;
    Engine()
        : workspace(engine.CreateWorkspace(u"Quorbin"_s, u"Admin"_s))
    {
        engine.Workspaces().Append(workspace);
    }
};

void EnsureCards()
{
    if (QFile::exists(CardFile()))
        return;
    Engine engine;
    Import(*engine.workspace, CardFile());
}

void BM_Import(benchmark::State& state)
{
    const QString path = QDir(Folder()).filePath(u"import.qnd"_s);
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(path);
        Engine engine;
        state.ResumeTiming();
        Import(*engine.workspace, path);
    }
    QFile::remove(path);
    state.SetItemsProcessed(state.iterations() * CardCount);
}
BENCHMARK(BM_Import)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_OpenAndFirstCard(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    for (auto _ : state) {
        auto database = engine.workspace->OpenDatabase(CardFile());
        auto cards = database->OpenRecordset(CardSet);
        for (const auto& field : cards->Fields().items())
            benchmark::DoNotOptimize(field->Value());
        database->Close();
    }
}
BENCHMARK(BM_OpenAndFirstCard)->Unit(benchmark::kMillisecond);

void BM_WalkCardSet(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    auto database = engine.workspace->OpenDatabase(CardFile());
    auto cards = database->OpenRecordset(CardSet);
    const auto fields = cards->Fields().items();
    for (auto _ : state) {
        qint64 visited = 0;
        for (cards->MoveFirst(); !cards->IsEOF(); cards->MoveNext()) {
            for (const auto& field : fields)
                benchmark::DoNotOptimize(field->Value());
            ++visited;
        }
        if (visited != CardCount)
            state.SkipWithError("not every card was visited");
    }
    state.SetItemsProcessed(state.iterations() * CardCount);
}
BENCHMARK(BM_WalkCardSet)->Unit(benchmark::kMillisecond);

void BM_LikeQuery(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    auto database = engine.workspace->OpenDatabase(CardFile());
    for (auto _ : state) {
        auto cats = database->OpenRecordset(
            u"SELECT * FROM Quorbin_Card WHERE Field1 LIKE '*cat*' ORDER BY [CardName]"_s);
        if (cats->RecordCount() != CardCount / 5)
            state.SkipWithError("wrong number of cats");
    }
}
BENCHMARK(BM_LikeQuery)->Unit(benchmark::kMillisecond);

void BM_FindNextFromTop(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    auto database = engine.workspace->OpenDatabase(CardFile());
    auto cards = database->OpenRecordset(CardSet);
    for (auto _ : state) {
        cards->MoveFirst();
        // The last card of the set: the search reads every card on the way.
        cards->FindNext(u"Field1 LIKE '* 99999'"_s);
        if (cards->NoMatch() || cards->AbsolutePosition() != CardCount - 1)
            state.SkipWithError("the last card was not found");
    }
}
BENCHMARK(BM_FindNextFromTop)->Unit(benchmark::kMillisecond);

void BM_MinMax(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    auto database = engine.workspace->OpenDatabase(CardFile());
    for (auto _ : state) {
        auto range = database->OpenRecordset(u"SELECT Min(Field7) AS [MinValue], "
                                             u"Max(Field7) AS [MaxValue] FROM Quorbin_Card"_s);
        benchmark::DoNotOptimize(range->Fields(u"MinValue"_s)->Value());
        benchmark::DoNotOptimize(range->Fields(u"MaxValue"_s)->Value());
    }
}
BENCHMARK(BM_MinMax)->Unit(benchmark::kMillisecond);

void BM_ExportText(benchmark::State& state)
{
    EnsureCards();
    Engine engine;
    auto database = engine.workspace->OpenDatabase(CardFile());
    auto cards = database->OpenRecordset(CardSet);
    std::vector<std::shared_ptr<Dao::Field>> fields;
    std::vector<QString> formats;
    for (const auto& field : cards->Fields().items()) {
        if (field->Name().startsWith(u"Field"_s)) {
            fields.push_back(field);
            formats.push_back(field->Name() == u"Field7"_s ? u"General Number"_s
                    : field->Name() == u"Field8"_s         ? u"dd MMM yyyy"_s
                                                           : QString());
        }
    }
    const auto name = cards->Fields(u"CardName"_s);
    const QString out = QDir(Folder()).filePath(u"export.csv"_s);
    for (auto _ : state) {
        QString text = u"\"Card Name\""_s;
        for (const auto& field : fields)
            text += u",\""_s + field->Name() + u'"';
        // Appended piece by piece, as ExportCards builds the card window's export.
        for (cards->MoveFirst(); !cards->IsEOF(); cards->MoveNext()) {
            text += u"\r\n\""_s;
            text += name->Value().text();
            text += u'"';
            for (size_t i = 0; i < fields.size(); ++i) {
                text += u",\""_s;
                text += Runtime::Format(fields[i]->Value(), formats[i]);
                text += u'"';
            }
        }
        QFile file(out);
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            state.SkipWithError("the export could not be written");
    }
}
BENCHMARK(BM_ExportText)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
