#include "graph/GraphDocument.h"

#include "frame/ChangeBatch.h"
#include "frame/DocumentHost.h"
#include "frame/ErrorMessage.h"
#include "frame/Helpers.h"
#include "frame/Hourglass.h"
#include "frame/Prompts.h"
#include "graph/Graph.h"
#include "graph/GraphCsv.h"
#include "graph/PictureExport.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr int openTitle = 551;
constexpr int graphTitleText = 570;
constexpr int notSavedText = 573;
constexpr int saveQuestionText = 574;
constexpr int exportTitle = 582;
constexpr int openFilter = 583;
constexpr int commaSeparatedFilter = 588;
constexpr int saveFilter = 584;
constexpr int saveAsTitle = 1007;
constexpr int fileNotFound = 53;
constexpr int fileAccessError = 75;

void ReportError(const QString& text)
{
    Frame::CurrentPrompts().message(
        text, QString(), Frame::MessageIcon::Exclamation, Frame::MessageButtons::Ok);
}

} // namespace

QStringList GridHeadings(Graph& graph)
{
    // XYPlot brings the statistics up to date first, so it must come before the type test.
    const bool xy = graph.XYPlot();
    if (graph.GraphType() == Graph::Scattergram || (graph.GraphType() == Graph::LineGraph && xy))
        return { u"X"_s, u"Y"_s };
    QStringList headings { u"Categories"_s };
    const int series = graph.NumberOfDataSeries();
    for (int index = 1; index <= series; ++index)
        headings.append(graph.DataSeriesLabel(index));
    return headings;
}


GraphDocument::GraphDocument(Frame::DocumentHost* host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_graph(std::make_unique<Graph>())
    // Reading the statistics raises any PlotTypeChanged still due inside the command, so the
    // refresh that follows never sets off another.
    , m_changes([this] { emit changed(); }, [this] { m_graph->XYPlot(); })
{
    m_graph->GraphTitle(GetResString(graphTitleText));
    // The options dialogs and the tools palette change the graph behind the document's back
    // and then ask for a redraw.
    connect(m_graph.get(), &Graph::RedrawGraph, this, [this] {
        const Frame::ChangeBatch::Scope scope(m_changes);
        edited(true);
    });
    // The headings follow the data: x-y pairs or categories.
    connect(m_graph.get(), &Graph::PlotTypeChanged, this, &GraphDocument::notify);
}

GraphDocument::~GraphDocument() = default;

QString GraphDocument::Caption() const
{
    if (m_fileName.isEmpty())
        return QString();
    return u"Ormsey - "_s + Frame::FileTitleOf(m_fileName);
}

void GraphDocument::notify()
{
    m_changes.notify();
}

void GraphDocument::edited(bool didChange)
{
    if (didChange)
        m_changed = true;
    notify();
}

void GraphDocument::setChanged(bool changed)
{
    m_changed = changed;
    notify();
}

void GraphDocument::SetGraphTitle(const QString& title)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (title == m_graph->GraphTitle())
        return;
    m_graph->GraphTitle(title);
    edited(true);
}

void GraphDocument::SetAxisLabels(const QString& horizontal, const QString& vertical)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    bool didChange = false;
    if (horizontal != m_graph->HorizontalAxisLabel()) {
        m_graph->HorizontalAxisLabel(horizontal);
        didChange = true;
    }
    if (vertical != m_graph->VerticalAxisLabel()) {
        m_graph->VerticalAxisLabel(vertical);
        didChange = true;
    }
    if (didChange)
        edited(true);
}

QStringList GraphDocument::Headings()
{
    return GridHeadings(*m_graph);
}

bool GraphDocument::SetCell(int row, int column, const QString& text)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    if (row < 0 || row >= Graph::RowCount || column < 0 || column >= Headings().size())
        return false;
    if (text == m_graph->Data(row, column))
        return false;
    m_graph->Data(row, column, text);
    edited(true);
    return true;
}

void GraphDocument::SetGraphType(int type)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    const bool didChange = type != m_graph->GraphType();
    if (didChange)
        m_graph->GraphType(type);
    edited(didChange);
}

void GraphDocument::SetGraph3D(bool on)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    const bool didChange = on != m_graph->Graph3D();
    if (didChange)
        m_graph->Graph3D(on);
    edited(didChange);
}

void GraphDocument::SetGraphFont(const QString& face)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    const QString before = m_graph->GraphFont();
    m_graph->GraphFont(face);
    edited(m_graph->GraphFont() != before);
}

void GraphDocument::Sort(int column)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_graph->SortGraph(column);
    edited(true);
}

void GraphDocument::GraphEdited()
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    edited(true);
}

bool GraphDocument::Open(const QString& path)
{
    int failure = 0;
    {
        const Frame::Hourglass hourglass;
        QFile file(path);
        if (!file.exists()) {
            failure = fileNotFound;
        } else if (!file.open(QIODevice::ReadOnly)) {
            failure = fileAccessError;
        } else {
            const QByteArray bytes = file.readAll();
            if (QFileInfo(path).suffix().compare(u"csv"_s, Qt::CaseInsensitive) == 0)
                return openCommaSeparated(bytes, QFileInfo(path).fileName());
            // Nothing of the graph shown before may survive into the one read: no cell of a
            // column the file leaves empty, no sort order, no non-integer flag.
            m_graph->InitialiseVariables();
            try {
                m_graph->LoadGraphDataBytes(bytes);
            } catch (const Runtime::Error& error) {
                // The cells read before the damage stay; the user sees what could be read.
                failure = error.number();
            }
            m_fileName = QFileInfo(path).absoluteFilePath();
            QCoreApplication::processEvents();
            const Frame::ChangeBatch::Scope scope(m_changes);
            setChanged(false);
        }
    }
    // After the hourglass, so the message shows the normal pointer.
    if (failure != 0)
        Frame::ShowErrorMessage(failure);
    return failure == 0;
}

bool GraphDocument::openCommaSeparated(const QByteArray& bytes, const QString& name)
{
    // Tried on a graph of its own first: text that is refused leaves the document as it was.
    Graph trial;
    const QString error = ImportGraphCsvBytes(trial, bytes, name);
    if (!error.isEmpty()) {
        ReportError(error);
        return false;
    }
    const Frame::ChangeBatch::Scope scope(m_changes);
    m_graph->InitialiseVariables();
    ImportGraphCsvBytes(*m_graph, bytes, name);
    // Data, not yet a graph file: saving asks for a graph file's name, and closing asks first.
    m_fileName.clear();
    setChanged(true);
    return true;
}

QString GraphDocument::dialogFolder() const
{
    return m_host != nullptr ? m_host->DialogFolder() : QString();
}

bool GraphDocument::OpenWithDialog()
{
    if (!AskToSave())
        return false;
    const Frame::FileDialogRequest request { GetResString(openTitle),
        GetResString(openFilter) + u'|' + GetResString(commaSeparatedFilter), 1, dialogFolder(),
        QString() };
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().openFile(request);
    if (!choice || choice->path.isEmpty())
        return false;
    if (m_host != nullptr)
        m_host->RememberDialogFolder(choice->path);
    return Open(choice->path);
}

bool GraphDocument::saveTo(const QString& path)
{
    const Frame::ChangeBatch::Scope scope(m_changes);
    const QString error = m_graph->SaveGraphData(path);
    if (!error.isEmpty()) {
        ReportError(error);
        return false;
    }
    m_fileName = QFileInfo(path).absoluteFilePath();
    setChanged(false);
    return true;
}

bool GraphDocument::Save()
{
    if (m_fileName.isEmpty())
        return SaveAs();
    return saveTo(m_fileName);
}

bool GraphDocument::SaveAs()
{
    Frame::FileDialogRequest request { GetResString(saveAsTitle), GetResString(saveFilter), 1,
        dialogFolder(), QString() };
    if (!m_fileName.isEmpty()) {
        request.folder = QFileInfo(m_fileName).absolutePath();
        request.fileName = QFileInfo(m_fileName).fileName();
    }
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
    if (!choice || choice->path.isEmpty())
        return false;
    QString path = choice->path;
    if (QFileInfo(path).suffix().isEmpty())
        path += u".qnp"_s;
    if (m_host != nullptr)
        m_host->RememberDialogFolder(path);
    return saveTo(path);
}

bool GraphDocument::Export()
{
    const Frame::FileDialogRequest request { GetResString(exportTitle), ExportFilter(), 1,
        QString(), QString() };
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
    if (!choice || choice->path.isEmpty())
        return false;
    QString path = choice->path;
    if (QFileInfo(path).suffix().isEmpty()) {
        static const QStringList extensions { u".emf"_s, u".png"_s, u".svg"_s, u".pdf"_s };
        path += extensions.value(choice->filterIndex - 1, extensions[0]);
    }
    const QString error = ExportPictureFile(*m_graph, path);
    if (!error.isEmpty()) {
        ReportError(error);
        return false;
    }
    return true;
}

bool GraphDocument::AskToSave()
{
    if (!m_changed)
        return true;
    const QString title
        = m_host != nullptr ? m_host->Caption() : QCoreApplication::applicationName();
    const Frame::MessageAnswer answer = Frame::CurrentPrompts().message(
        GetResString(notSavedText) + u"\n"_s + GetResString(saveQuestionText), title,
        Frame::MessageIcon::Exclamation, Frame::MessageButtons::YesNoCancel);
    switch (answer) {
    case Frame::MessageAnswer::Yes:
        return Save();
    case Frame::MessageAnswer::No: {
        const Frame::ChangeBatch::Scope scope(m_changes);
        setChanged(false);
        return true;
    }
    default:
        return false;
    }
}

std::optional<QString> GraphDocument::DroppedGraphFile(const QMimeData* data)
{
    if (data == nullptr || !data->hasUrls())
        return std::nullopt;
    const QList<QUrl> urls = data->urls();
    if (urls.size() != 1 || !urls[0].isLocalFile())
        return std::nullopt;
    const QString path = urls[0].toLocalFile();
    if (!path.endsWith(u"qnp"_s, Qt::CaseInsensitive))
        return std::nullopt;
    return path;
}

bool GraphDocument::Drop(const QMimeData* data)
{
    const std::optional<QString> path = DroppedGraphFile(data);
    if (!path)
        return false;
    if (AskToSave())
        Open(*path);
    return true;
}

} // namespace Ormsey
