#include "graph/ui/frmOrmsey.h"

#include "frame/DocumentHost.h"
#include "frame/Prompts.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "graph/Graph.h"
#include "graph/GraphDocument.h"
#include "graph/ui/DataGrid.h"
#include "graph/ui/DataGridModel.h"
#include "graph/ui/GraphOptionWindows.h"
#include "graph/ui/PictureBox.h"
#include "graph/ui/frmEditDataSeries.h"
#include "graph/ui/frmOrmseyPrint.h"
#include "platform/emf/Player.h"
#include "resources/StringTable.h"

#include <QActionGroup>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr int xAxisLabelText = 571;
constexpr int yAxisLabelText = 572;
constexpr int graphTitleCaption = 575;
const QString toolbarSetting = u"omToolbar"_s;

// The toolbar's pictures: indexes into the frame's shared image list.
constexpr int openImage = 1;
constexpr int saveImage = 2;
constexpr int printImage = 3;
constexpr int barChartImage = 5; // to the scattergram's, in the order of the graph types
constexpr int make3DImage = 14;
constexpr int optionsImage = 15;

} // namespace

frmOrmsey::frmOrmsey(Frame::DocumentHost* host, QWidget* parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_document(new GraphDocument(host, this))
{
    setObjectName(u"frmOrmsey"_s);
    m_options = new GraphOptionWindows(GraphObject(), this);
    setAcceptDrops(true);

    buildInputArea();
    buildMenus();
    buildToolbar();

    connect(m_document, &GraphDocument::changed, this, &frmOrmsey::Refresh);
    const QVariant layout = QSettings().value(toolbarSetting);
    if (layout.isValid())
        restoreState(layout.toByteArray());
    Refresh();
}

frmOrmsey::~frmOrmsey()
{
    // Tearing the widgets down moves the focus, and a box losing it would hand its text to
    // this window after its own part is gone: nothing of the children may call back now.
    const QList<QObject*> children = findChildren<QObject*>();
    for (QObject* child : children)
        QObject::disconnect(child, nullptr, this, nullptr);
}

Graph& frmOrmsey::GraphObject()
{
    return m_document->GraphObject();
}

void frmOrmsey::buildInputArea()
{
    auto* input = new QWidget;
    auto* fields = new QGridLayout;
    const auto addField
        = [&](int row, int captionId, QLabel*& label, QLineEdit*& box, const QString& name) {
              label = new QLabel(GetResString(captionId));
              box = new QLineEdit;
              box->setObjectName(name);
              box->setAccessibleName(label->text().remove(u'&'));
              label->setBuddy(box);
              fields->addWidget(label, row, 0);
              fields->addWidget(box, row, 1);
          };
    addField(0, graphTitleCaption, lblGraphTitle, txtGraphTitle, u"txtGraphTitle"_s);
    addField(1, xAxisLabelText, lblXAxisLabel, txtXAxisLabel, u"txtXAxisLabel"_s);
    addField(2, yAxisLabelText, lblYAxisLabel, txtYAxisLabel, u"txtYAxisLabel"_s);
    connect(txtGraphTitle, &QLineEdit::editingFinished, this,
        [this] { m_document->SetGraphTitle(txtGraphTitle->text()); });
    for (QLineEdit* box : { txtXAxisLabel, txtYAxisLabel })
        connect(box, &QLineEdit::editingFinished, this,
            [this] { m_document->SetAxisLabels(txtXAxisLabel->text(), txtYAxisLabel->text()); });

    GridModel = new DataGridModel(*m_document, this);
    grdData = new DataGrid(GridModel);
    grdData->setObjectName(u"grdData"_s);
    input->setMinimumWidth(300);
    auto* layout = new QVBoxLayout(input);
    layout->addLayout(fields);
    layout->addWidget(grdData, 1);

    picGraph = new PictureBox(GraphObject());
    picGraph->setObjectName(u"picGraph"_s);
    splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(input);
    splitter->addWidget(picGraph);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    splitter->setSizes({ 380, 540 });
    splitter->setChildrenCollapsible(false);
    setCentralWidget(splitter);
}

QAction* frmOrmsey::addMenuItem(QMenu* menu, int id)
{
    QAction* action = menu->addAction(GetResString(id));
    m_actions.append({ id, action });
    return action;
}

QAction* frmOrmsey::Action(int id) const
{
    for (const auto& [key, action] : m_actions) {
        if (key == id)
            return action;
    }
    return nullptr;
}

template <typename Command> void frmOrmsey::forward(Command command)
{
    CommitEdits();
    command(*m_document);
}

void frmOrmsey::buildMenus()
{
    using namespace GraphMenu;
    const auto onTriggered = [this](QAction* action, auto handler) {
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    const auto forwarding = [this](auto command) { return [this, command] { forward(command); }; };

    mnuFile = menuBar()->addMenu(GetResString(File));
    onTriggered(addMenuItem(mnuFile, New), [this] {
        if (m_host != nullptr)
            m_host->NewFile();
    });
    onTriggered(addMenuItem(mnuFile, Open),
        forwarding([](GraphDocument& document) { document.OpenWithDialog(); }));
    onTriggered(addMenuItem(mnuFile, Close), [this] {
        // Inside the main window the frame around this window asks and closes.
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Save), forwarding([](GraphDocument& document) {
        document.Save();
    }))->setShortcut(QKeySequence::Save);
    onTriggered(addMenuItem(mnuFile, SaveAs),
        forwarding([](GraphDocument& document) { document.SaveAs(); }));
    onTriggered(addMenuItem(mnuFile, ExportGraph),
        forwarding([](GraphDocument& document) { document.Export(); }));
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Print), &frmOrmsey::PrintGraph)
        ->setShortcut(QKeySequence::Print);
    mnuFile->addSeparator();
    onTriggered(addMenuItem(mnuFile, Exit), [this] {
        if (m_host != nullptr)
            m_host->Exit();
        else
            close();
    });

    mnuEdit = menuBar()->addMenu(GetResString(Edit));
    onTriggered(addMenuItem(mnuEdit, CopyGraph), &frmOrmsey::copyGraph);
    mnuEdit->addSeparator();
    onTriggered(addMenuItem(mnuEdit, TextStyle), &frmOrmsey::chooseTextStyle);

    mnuGraph = menuBar()->addMenu(GetResString(GraphKind));
    auto* types = new QActionGroup(this);
    for (int type = Graph::BarChart; type <= Graph::Scattergram; ++type) {
        QAction* item = addMenuItem(mnuGraph, BarChart + type);
        item->setCheckable(true);
        types->addAction(item);
        onTriggered(
            item, forwarding([type](GraphDocument& document) { document.SetGraphType(type); }));
    }
    mnuGraph->addSeparator();
    QAction* make3D = addMenuItem(mnuGraph, Make3D);
    make3D->setCheckable(true);
    onTriggered(make3D, [this](bool on) { m_document->SetGraph3D(on); });
    mnuGraph->addSeparator();
    onTriggered(addMenuItem(mnuGraph, Options), [this] {
        CommitEdits();
        m_options->ShowOptions();
    });
    onTriggered(addMenuItem(mnuGraph, GraphTools), &frmOrmsey::ShowGraphTools);

    mnuData = menuBar()->addMenu(GetResString(Data));
    const int sortColumns[] = { 0, 1, -1 };
    for (int index = 0; index < 3; ++index) {
        const int column = sortColumns[index];
        onTriggered(addMenuItem(mnuData, SortByName + index),
            forwarding([column](GraphDocument& document) { document.Sort(column); }));
    }
    mnuData->addSeparator();
    onTriggered(addMenuItem(mnuData, EditDataSeries), &frmOrmsey::editDataSeries);

    mnuHelp = menuBar()->addMenu(GetResString(Help));
    onTriggered(addMenuItem(mnuHelp, About), [this] {
        if (m_host != nullptr)
            m_host->ShowAbout();
    });

    for (const auto& [id, action] : m_actions)
        action->setObjectName(u"mnu"_s + QString::number(id));
}

void frmOrmsey::buildToolbar()
{
    tbrToolbar = addToolBar(QString());
    tbrToolbar->setObjectName(toolbarSetting);
    tbrToolbar->setIconSize(QSize(24, 24));
    const auto addButton = [this](int id, int image) {
        const QIcon icon = m_host != nullptr
            ? m_host->ToolbarImages().ListImages(image)
            : Frame::ResourceIcon(Frame::ToolbarIconNumbers().value(image - 1));
        QAction* button = tbrToolbar->addAction(icon, GetResString(id));
        button->setObjectName(u"tbr"_s + QString::number(id));
        m_actions.append({ GraphToolbar::Key + id, button });
        return button;
    };
    // The buttons do what the menu items of the same name do.
    const auto mirror = [this](QAction* button, int menuId) {
        connect(button, &QAction::triggered, Action(menuId), &QAction::trigger);
    };
    mirror(addButton(GraphToolbar::Open, openImage), GraphMenu::Open);
    mirror(addButton(GraphToolbar::Save, saveImage), GraphMenu::Save);
    mirror(addButton(GraphToolbar::Print, printImage), GraphMenu::Print);
    tbrToolbar->addSeparator();
    auto* types = new QActionGroup(this);
    for (int type = Graph::BarChart; type <= Graph::Scattergram; ++type) {
        QAction* button = addButton(GraphToolbar::BarChart + type, barChartImage + type);
        button->setCheckable(true);
        types->addAction(button);
        mirror(button, GraphMenu::BarChart + type);
    }
    QAction* make3D = addButton(GraphToolbar::Make3D, make3DImage);
    make3D->setCheckable(true);
    connect(make3D, &QAction::triggered, this, [this](bool on) { m_document->SetGraph3D(on); });
    tbrToolbar->addSeparator();
    mirror(addButton(GraphToolbar::Options, optionsImage), GraphMenu::Options);
}

void frmOrmsey::setFileName(const QString& fileName)
{
    // A pupil starts typing data straight away: the keys go to the grid's first cell.
    grdData->setFocus();
    if (!fileName.isEmpty())
        m_document->Open(fileName);
}

QString frmOrmsey::fileName() const
{
    return m_document->FileName();
}

void frmOrmsey::CommitEdits()
{
    grdData->EndCellEdit();
    m_document->SetGraphTitle(txtGraphTitle->text());
    m_document->SetAxisLabels(txtXAxisLabel->text(), txtYAxisLabel->text());
}

void frmOrmsey::Refresh()
{
    // Reading the graph may bring its statistics up to date, which notifies again: the
    // refresh under way shows that state already.
    if (m_refreshing)
        return;
    m_refreshing = true;
    Graph& graph = GraphObject();
    const auto show = [](QLineEdit* box, const QString& text) {
        if (box->text() != text)
            box->setText(text);
    };
    show(txtGraphTitle, graph.GraphTitle());
    show(txtXAxisLabel, graph.HorizontalAxisLabel());
    show(txtYAxisLabel, graph.VerticalAxisLabel());
    GridModel->Refresh();

    const int type = graph.GraphType();
    for (int index = Graph::BarChart; index <= Graph::Scattergram; ++index) {
        Action(GraphMenu::BarChart + index)->setChecked(index == type);
        Action(GraphToolbar::Key + GraphToolbar::BarChart + index)->setChecked(index == type);
    }
    for (QAction* make3D :
        { Action(GraphMenu::Make3D), Action(GraphToolbar::Key + GraphToolbar::Make3D) }) {
        make3D->setEnabled(graph.CanBe3D());
        make3D->setChecked(graph.Graph3D());
    }
    Action(GraphMenu::EditDataSeries)->setEnabled(type < Graph::Scattergram && !graph.XYPlot());
    if (!m_document->Caption().isEmpty())
        setWindowTitle(m_document->Caption());
    if (m_host != nullptr)
        m_host->SetDocumentChanged(this, m_document->IsChanged());
    picGraph->update();
    m_refreshing = false;
}

void frmOrmsey::copyGraph()
{
    CommitEdits();
    Graph& graph = GraphObject();
    const std::unique_ptr<Emf::Picture> picture = graph.CopyPicture();
    if (!picture || !picture->isValid())
        return;
    auto* data = new QMimeData;
    data->setData(u"image/x-emf"_s, picture->bytes());
    // Programs that take no metafiles paste the picture at twice its size, for print.
    data->setImageData(Emf::RenderPicture(*picture, QSize(graph.Width(), graph.Height()) * 2));
    QGuiApplication::clipboard()->setMimeData(data);
}

void frmOrmsey::chooseTextStyle()
{
    CommitEdits();
    const std::optional<QFont> chosen
        = Frame::CurrentPrompts().font(QFont(GraphObject().GraphFont(), 12));
    if (chosen)
        m_document->SetGraphFont(chosen->family());
}

void frmOrmsey::editDataSeries()
{
    CommitEdits();
    frmEditDataSeries dialog(GraphObject(), this);
    if (dialog.exec() == QDialog::Accepted)
        m_document->GraphEdited();
}

void frmOrmsey::ShowGraphTools()
{
    CommitEdits();
    m_options->ShowGraphTools();
}

void frmOrmsey::PrintGraph()
{
    CommitEdits();
    frmOrmseyPrint dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        PrintGraphPage(GraphObject(), dialog.Choices(), windowTitle());
}

bool frmOrmsey::queryClose()
{
    CommitEdits();
    if (!m_document->AskToSave())
        return false;
    QSettings().setValue(toolbarSetting, saveState());
    return true;
}

void frmOrmsey::closeEvent(QCloseEvent* event)
{
    // Inside the main window the frame has asked already; alone, the window asks itself.
    if (parentWidget() == nullptr && !queryClose()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

namespace {

// A drag is welcome only with the one graph file a drop may bring.
void AnswerDrag(QDragMoveEvent* event)
{
    if (GraphDocument::DroppedGraphFile(event->mimeData())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace

void frmOrmsey::dragEnterEvent(QDragEnterEvent* event)
{
    AnswerDrag(event);
}

void frmOrmsey::dragMoveEvent(QDragMoveEvent* event)
{
    AnswerDrag(event);
}

void frmOrmsey::dropEvent(QDropEvent* event)
{
    if (!GraphDocument::DroppedGraphFile(event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    CommitEdits();
    m_document->Drop(event->mimeData());
}

} // namespace Ormsey
