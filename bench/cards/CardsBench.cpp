// 100,000 cards through the card file: a class list imported from comma-separated text with
// a label line (ImportDelimitedFile, as Ctrl+Shift+I and `quorbin-cli cards import` do),
// and the card set exported as the Sprondle view's text (ExportCards, every user field in
// its display format) and written to a file. ../dao/compare_with_sqlite3.sh does the same
// with the sqlite3 shell: `.import` of the same text, then INSERT ... SELECT, and the same
// columns written as CSV.
//
// The files are kept in $QUORBIN_BENCH_CARDS_DIR when that is set, else in a temporary
// folder.
#include "cards/CardDatabase.h"
#include "cards/CardExport.h"
#include "cards/CardFields.h"
#include "cards/CardImport.h"
#include "platform/dao/DBEngine.h"
#include "platform/dao/TableDef.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <numeric>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int CardCount = 100000;

const QStringList Labels = { u"Kind"_s, u"Colour"_s, u"Owner"_s, u"Notes"_s, u"Town"_s, u"Food"_s };

QString Folder()
{
    static QTemporaryDir temporary;
    const QString chosen = qEnvironmentVariable("QUORBIN_BENCH_CARDS_DIR");
    return chosen.isEmpty() ? temporary.path() : chosen;
}

QString PathOf(const QString& name)
{
    return QDir(Folder()).filePath(name);
}

// The class list: a label line, then one card a line in a shuffled order, so that the card
// set's order is not the order of the rows in the file.
QString ClassList()
{
    const QString path = PathOf(u"classlist.csv"_s);
    if (QFile::exists(path))
        return path;
    static const char* const kinds[] = { "cat", "dog", "rabbit", "hamster", "goldfish", "tortoise",
        "bobcat", "pony", "parrot", "snake" };
    static const char* const colours[]
        = { "black", "white", "brown", "ginger", "grey", "tabby", "spotted" };
    std::vector<int> order(CardCount);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(2004));
    QByteArray text = "Name," + Labels.join(u',').toUtf8() + "\r\n";
    for (const int i : order) {
        text += QStringLiteral("Card %1,%2 %3,%4,Owner %5,Notes about card %3,Town %6,Food %7\r\n")
                    .arg(i, 6, 10, QChar(u'0'))
                    .arg(QLatin1StringView(kinds[i % 10]))
                    .arg(i)
                    .arg(QLatin1StringView(colours[i % 7]))
                    .arg(i % 977)
                    .arg(i % 53)
                    .arg(i % 11)
                    .toUtf8();
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    return path;
}

// A new card file whose six starting fields carry the list's labels, as
// `quorbin-cli cards new --labels` makes it.
void NewCardFile(Dao::DBEngine& engine, const QString& path)
{
    QFile::remove(path);
    Bramlet::CardDatabase(engine).CreateCardDatabase(path, 4);
    Bramlet::CardDatabase cards(engine);
    cards.OpenCardDatabase(path);
    for (qsizetype index = 0; index < Labels.size(); ++index) {
        Bramlet::SetFieldLabel(
            *cards.MainTableDef()->Fields(u"Field"_s + QString::number(index + 1)), Labels[index]);
    }
}

void BM_ImportCsv(benchmark::State& state)
{
    const QString list = ClassList();
    const QString path = PathOf(u"classlist-import.qnd"_s);
    for (auto _ : state) {
        state.PauseTiming();
        Dao::DBEngine engine;
        NewCardFile(engine, path);
        Bramlet::CardDatabase cards(engine);
        cards.OpenCardDatabase(path);
        state.ResumeTiming();
        if (Bramlet::ImportDelimitedFile(cards, list) != CardCount)
            state.SkipWithError("not every card was imported");
    }
    state.SetItemsProcessed(state.iterations() * CardCount);
}
BENCHMARK(BM_ImportCsv)->Unit(benchmark::kMillisecond)->Iterations(3);

QString ImportedCards()
{
    const QString path = PathOf(u"classlist.qnd"_s);
    if (QFile::exists(path))
        return path;
    Dao::DBEngine engine;
    NewCardFile(engine, path);
    Bramlet::CardDatabase cards(engine);
    cards.OpenCardDatabase(path);
    Bramlet::ImportDelimitedFile(cards, ClassList());
    return path;
}

void BM_ExportCsv(benchmark::State& state)
{
    const QString path = ImportedCards();
    Dao::DBEngine engine;
    Bramlet::CardDatabase cards(engine);
    cards.OpenCardDatabase(path);
    const QString out = PathOf(u"classlist-export.csv"_s);
    for (auto _ : state) {
        const QByteArray text = Bramlet::ExportCards(cards, 4).toUtf8();
        QFile file(out);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            state.SkipWithError("the export could not be written");
    }
    state.SetItemsProcessed(state.iterations() * CardCount);
}
BENCHMARK(BM_ExportCsv)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
