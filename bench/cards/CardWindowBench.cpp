// The card window on a file of 100,000 cards in the Sprondle view (every user field shown):
// opening it and showing the first card, pressing Next Record (each press saves nothing, moves
// one card and shows it), and Refresh Database (the card set read again, the card shown).
// Aims: each under 100 ms, Next Record under 1 ms.
#include "cards/CardDatabase.h"
#include "cards/CardDocument.h"
#include "cards/CardFields.h"
#include "cards/ui/frmBramlet.h"
#include "frame/FrameSettings.h"
#include "platform/dao/DBEngine.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int CardCount = 100000;

QString CardFile()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(u"cards.qnd"_s);
        Dao::DBEngine engine;
        Bramlet::CardDatabase cards(engine);
        cards.CreateCardDatabase(file, Bramlet::SprondleView);
        cards.OpenCardDatabase(file);
        Bramlet::LabelStartingFields(cards, { u"Animal"_s, u"Colour"_s, u"Owner"_s });
        cards.OpenMainRecordSet();
        static const QString kinds[] = { u"cat"_s, u"dog"_s, u"rabbit"_s, u"hamster"_s };
        const auto& set = cards.MainTable();
        cards.Workspace()->BeginTrans();
        for (int card = 0; card < CardCount; ++card) {
            set->AddNew();
            set->Fields(u"CardName"_s)->SetValue(u"Card %1"_s.arg(card, 6, 10, QLatin1Char('0')));
            set->Fields(u"FreeText"_s)->SetValue(u"Free text of card "_s + QString::number(card));
            set->Fields(u"Field1"_s)->SetValue(kinds[card % 4]);
            set->Fields(u"Field2"_s)->SetValue(u"brown"_s);
            set->Fields(u"Field3"_s)->SetValue(u"Pupil "_s + QString::number(card % 30));
            set->Update();
        }
        cards.Workspace()->CommitTrans();
        return file;
    }();
    return path;
}

void OpenAtFirstCard(benchmark::State& state)
{
    const QString file = CardFile();
    for (auto _ : state) {
        Bramlet::frmBramlet window;
        window.show();
        window.setFileName(file);
        state.PauseTiming();
        if (window.lblNoOfRecords->text() != u"/100000"_s
            || window.txtName->text() != u"Card 000000"_s)
            state.SkipWithError("the file did not open at its first card");
        window.close();
        state.ResumeTiming();
    }
}

std::unique_ptr<Bramlet::frmBramlet> OpenWindow()
{
    auto window = std::make_unique<Bramlet::frmBramlet>();
    window->show();
    window->setFileName(CardFile());
    return window;
}

void NextRecord(benchmark::State& state)
{
    const auto window = OpenWindow();
    QAction* next = window->Action(Bramlet::CardToolbar::Key + Bramlet::CardToolbar::NextRecord);
    for (auto _ : state)
        next->trigger();
    if (window->txtRecordNo->text() != QString::number(state.iterations() + 1))
        state.SkipWithError("Next Record did not reach the card expected");
}

void RefreshDatabase(benchmark::State& state)
{
    const auto window = OpenWindow();
    window->Document().GoToNumber(u"500"_s);
    QAction* refresh = window->Action(Bramlet::CardToolbar::Key + Bramlet::CardToolbar::Refresh);
    for (auto _ : state)
        refresh->trigger();
    if (window->txtRecordNo->text() != u"500"_s)
        state.SkipWithError("Refresh did not keep the card on show");
}

} // namespace

BENCHMARK(OpenAtFirstCard)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(NextRecord)->Unit(benchmark::kMicrosecond)->Iterations(1000);
BENCHMARK(RefreshDatabase)->Unit(benchmark::kMillisecond)->Iterations(20);

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Frame::InitialiseFrame(QApplication::applicationDirPath());
    CardFile();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
