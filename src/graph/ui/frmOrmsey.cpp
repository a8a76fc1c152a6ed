#include "graph/ui/frmOrmsey.h"

#include "frame/FrameSettings.h"
#include "frame/Helpers.h"
#include "frame/Prompts.h"
#include "frame/ui/PrinterList.h"
#include "frame/ui/ResourceIcons.h"
#include "frame/ui/frmMDI.h"
#include "graph/Graph.h"
#include "graph/PictureExport.h"
#include "graph/PrintPicture.h"
#include "graph/ui/DataGrid.h"
#include "graph/ui/DataGridModel.h"
#include "graph/ui/GraphOptionWindows.h"
#include "graph/ui/PictureBox.h"
#include "graph/ui/frmEditDataSeries.h"
#include "graph/ui/frmOrmseyPrint.h"
#include "platform/emf/Player.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QPrinter>
#include <QSettings>
#include <QSplitter>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr int openTitle = 551;
constexpr int graphTitleText = 570;
constexpr int xAxisLabelText = 571;
constexpr int yAxisLabelText = 572;
constexpr int notSavedText = 573;
constexpr int saveQuestionText = 574;
constexpr int graphTitleCaption = 575;
constexpr int exportTitle = 582;
constexpr int openFilter = 583;
constexpr int saveFilter = 584;
constexpr int saveAsTitle = 1007;
constexpr int unknownErrorText = 451;
constexpr int fileNotFound = 53;
constexpr int printerError = 482;
// Toolbar buttons share their string ids with menu items, so they are kept apart by this.
constexpr int toolbarKey = 1000;
const QString toolbarSetting = u"omToolbar"_s;

// Restores the normal pointer however the command ends.
class Hourglass
{
public:
    Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

void ReportError(const QString& text)
{
    Frame::CurrentPrompts().message(
        text, QString(), Frame::MessageIcon::Exclamation, Frame::MessageButtons::Ok);
}

QString MainCaption()
{
    if (Frame::frmMDI* main = Frame::frmMDI::Current())
        return main->windowTitle();
    return QApplication::applicationDisplayName();
}

} // namespace

frmOrmsey::frmOrmsey(QWidget* parent)
    : QMainWindow(parent)
    , m_graph(std::make_unique<Graph>())
{
    setObjectName(u"frmOrmsey"_s);
    m_graph->GraphTitle(GetResString(graphTitleText));
    m_options = new GraphOptionWindows(*m_graph, this);
    setAcceptDrops(true);

    buildInputArea();
    buildMenus();
    buildToolbar();

    connect(GridModel, &DataGridModel::CellEdited, this, [this] {
        SetChanged(true);
        UpdateGridHeadings();
        UpdateMenus();
        RefreshPicture();
    });
    // The options dialogs and the tools palette change the graph behind the window's back.
    connect(m_graph.get(), &Graph::RedrawGraph, this, [this] {
        SetChanged(true);
        if (txtGraphTitle->text() != m_graph->GraphTitle())
            txtGraphTitle->setText(m_graph->GraphTitle());
        UpdateGridHeadings();
        UpdateMenus();
        RefreshPicture();
    });
    connect(m_graph.get(), &Graph::PlotTypeChanged, this, [this] {
        UpdateGridHeadings();
        UpdateMenus();
    });

    const QVariant layout = QSettings().value(toolbarSetting);
    if (layout.isValid())
        restoreState(layout.toByteArray());
    GetDataFromGraphObject();
}

frmOrmsey::~frmOrmsey()
{
    // Tearing the widgets down moves the focus, and a box losing it would hand its text to
    // this window after its own part is gone: nothing of the children may call back now.
    const QList<QObject*> children = findChildren<QObject*>();
    for (QObject* child : children)
        QObject::disconnect(child, nullptr, this, nullptr);
}

void frmOrmsey::buildInputArea()
{
    auto* input = new QWidget;
    auto* fields = new QGridLayout;
    const auto addField = [&](int row, int captionId, QLabel*& label, QLineEdit*& box) {
        label = new QLabel(GetResString(captionId));
        box = new QLineEdit;
        label->setBuddy(box);
        fields->addWidget(label, row, 0);
        fields->addWidget(box, row, 1);
    };
    addField(0, graphTitleCaption, lblGraphTitle, txtGraphTitle);
    addField(1, xAxisLabelText, lblXAxisLabel, txtXAxisLabel);
    addField(2, yAxisLabelText, lblYAxisLabel, txtYAxisLabel);
    connect(txtGraphTitle, &QLineEdit::editingFinished, this, &frmOrmsey::TakeTitle);
    connect(txtXAxisLabel, &QLineEdit::editingFinished, this, &frmOrmsey::TakeAxisLabels);
    connect(txtYAxisLabel, &QLineEdit::editingFinished, this, &frmOrmsey::TakeAxisLabels);

    GridModel = new DataGridModel(*m_graph, this);
    grdData = new DataGrid(GridModel);
    input->setMinimumWidth(300);
    auto* layout = new QVBoxLayout(input);
    layout->addLayout(fields);
    layout->addWidget(grdData, 1);

    picGraph = new PictureBox(*m_graph);
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

void frmOrmsey::buildMenus()
{
    mnuFile = menuBar()->addMenu(GetResString(500));
    connect(addMenuItem(mnuFile, 501), &QAction::triggered, this, [] {
        if (Frame::frmMDI* main = Frame::frmMDI::Current())
            main->ShowNewFile();
    });
    connect(addMenuItem(mnuFile, 502), &QAction::triggered, this, &frmOrmsey::FileOpen);
    connect(addMenuItem(mnuFile, 503), &QAction::triggered, this, [this] {
        // Inside the main window the frame around this window asks and closes.
        if (parentWidget() != nullptr)
            parentWidget()->close();
        else
            close();
    });
    mnuFile->addSeparator();
    QAction* save = addMenuItem(mnuFile, 505);
    save->setShortcut(QKeySequence::Save);
    connect(save, &QAction::triggered, this, &frmOrmsey::FileSave);
    connect(addMenuItem(mnuFile, 506), &QAction::triggered, this, &frmOrmsey::FileSaveAs);
    connect(addMenuItem(mnuFile, 507), &QAction::triggered, this, &frmOrmsey::ExportGraphFile);
    mnuFile->addSeparator();
    QAction* print = addMenuItem(mnuFile, 509);
    print->setShortcut(QKeySequence::Print);
    connect(print, &QAction::triggered, this, &frmOrmsey::PrintGraph);
    mnuFile->addSeparator();
    connect(addMenuItem(mnuFile, 511), &QAction::triggered, this, [this] {
        if (Frame::frmMDI* main = Frame::frmMDI::Current())
            main->close();
        else
            close();
    });

    mnuEdit = menuBar()->addMenu(GetResString(520));
    connect(addMenuItem(mnuEdit, 521), &QAction::triggered, this, &frmOrmsey::CopyGraph);
    mnuEdit->addSeparator();
    connect(addMenuItem(mnuEdit, 523), &QAction::triggered, this, &frmOrmsey::ChooseTextStyle);

    mnuGraph = menuBar()->addMenu(GetResString(530));
    auto* types = new QActionGroup(this);
    for (int type = 0; type < 4; ++type) {
        QAction* item = addMenuItem(mnuGraph, 531 + type);
        item->setCheckable(true);
        types->addAction(item);
        connect(item, &QAction::triggered, this, [this, type] { SetGraphType(type); });
    }
    mnuGraph->addSeparator();
    QAction* make3D = addMenuItem(mnuGraph, 536);
    make3D->setCheckable(true);
    connect(make3D, &QAction::triggered, this, &frmOrmsey::SetGraph3D);
    mnuGraph->addSeparator();
    connect(addMenuItem(mnuGraph, 538), &QAction::triggered, this, &frmOrmsey::ShowOptions);

    mnuData = menuBar()->addMenu(GetResString(540));
    for (int column = 0; column < 2; ++column)
        connect(addMenuItem(mnuData, 541 + column), &QAction::triggered, this,
            [this, column] { Sort(column); });
    connect(addMenuItem(mnuData, 543), &QAction::triggered, this, [this] { Sort(-1); });
    mnuData->addSeparator();
    connect(addMenuItem(mnuData, 545), &QAction::triggered, this, &frmOrmsey::EditDataSeries);

    mnuHelp = menuBar()->addMenu(GetResString(420));
    connect(addMenuItem(mnuHelp, 421), &QAction::triggered, this, [] {
        if (Frame::frmMDI* main = Frame::frmMDI::Current())
            main->ShowAbout();
    });
}

void frmOrmsey::buildToolbar()
{
    tbrToolbar = addToolBar(QString());
    tbrToolbar->setObjectName(toolbarSetting);
    tbrToolbar->setIconSize(QSize(24, 24));
    const auto addButton = [this](int id, int icon) {
        QAction* button = tbrToolbar->addAction(Frame::ResourceIcon(icon), GetResString(id));
        m_actions.append({ toolbarKey + id, button });
        return button;
    };
    connect(addButton(551, 127), &QAction::triggered, this, &frmOrmsey::FileOpen);
    connect(addButton(552, 128), &QAction::triggered, this, &frmOrmsey::FileSave);
    connect(addButton(553, 129), &QAction::triggered, this, &frmOrmsey::PrintGraph);
    tbrToolbar->addSeparator();
    auto* types = new QActionGroup(this);
    for (int type = 0; type < 4; ++type) {
        QAction* button = addButton(555 + type, 105 + type);
        button->setCheckable(true);
        types->addAction(button);
        connect(button, &QAction::triggered, this, [this, type] { SetGraphType(type); });
    }
    QAction* make3D = addButton(559, 122);
    make3D->setCheckable(true);
    connect(make3D, &QAction::triggered, this, &frmOrmsey::SetGraph3D);
    tbrToolbar->addSeparator();
    connect(addButton(561, 123), &QAction::triggered, this, &frmOrmsey::ShowOptions);
}

int frmOrmsey::Slot() const
{
    bool ok = false;
    const int slot = property("Tag").toString().toInt(&ok);
    return ok && Frame::Settings().DocumentTable.isValidIndex(slot) ? slot : -1;
}

bool frmOrmsey::IsChanged() const
{
    const int slot = Slot();
    return slot >= 0 ? Frame::Settings().DocumentTable.slot(slot).Changed : m_changed;
}

void frmOrmsey::SetChanged(bool changed)
{
    m_changed = changed;
    const int slot = Slot();
    if (slot >= 0)
        Frame::Settings().DocumentTable.setChanged(slot, changed);
}

void frmOrmsey::SetCaption()
{
    setWindowTitle(u"Ormsey - "_s + Frame::FileTitleOf(m_fileName));
}

void frmOrmsey::setFileName(const QString& fileName)
{
    // A pupil starts typing data straight away: the keys go to the grid's first cell.
    grdData->setFocus();
    if (fileName.isEmpty()) {
        m_fileName.clear();
        return;
    }
    OpenGraphFile(fileName);
}

void frmOrmsey::OpenGraphFile(const QString& path)
{
    grdData->EndCellEdit();
    if (!QFileInfo::exists(path)) {
        ReportError(GetResString(unknownErrorText) + QString::number(fileNotFound));
        return;
    }
    int failure = 0;
    {
        const Hourglass hourglass;
        m_fileName = path;
        try {
            m_graph->LoadGraphData(path);
        } catch (const Runtime::Error& error) {
            // The cells read before the damage stay; the user sees what could be read.
            failure = error.number();
        }
        QCoreApplication::processEvents();
        GetDataFromGraphObject();
        SetChanged(false);
        SetCaption();
        RefreshPicture();
    }
    // After the hourglass, so the message shows the normal pointer.
    if (failure != 0)
        ReportError(GetResString(unknownErrorText) + QString::number(failure));
}

void frmOrmsey::FileOpen()
{
    if (!AskToSave())
        return;
    Frame::FileDialogRequest request { GetResString(openTitle), GetResString(openFilter), 1,
        QString(), QString() };
    if (Frame::frmMDI* main = Frame::frmMDI::Current())
        request.folder = main->CommonDialogFolder;
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().openFile(request);
    if (!choice || choice->path.isEmpty())
        return;
    OpenGraphFile(choice->path);
}

bool frmOrmsey::SaveTo(const QString& path)
{
    grdData->EndCellEdit();
    TakeTitle();
    TakeAxisLabels();
    const QString error = m_graph->SaveGraphData(path);
    if (!error.isEmpty()) {
        ReportError(error);
        return false;
    }
    m_fileName = path;
    SetCaption();
    SetChanged(false);
    return true;
}

bool frmOrmsey::FileSave()
{
    if (m_fileName.isEmpty())
        return FileSaveAs();
    return SaveTo(m_fileName);
}

bool frmOrmsey::FileSaveAs()
{
    Frame::FileDialogRequest request { GetResString(saveAsTitle), GetResString(saveFilter), 1,
        QFileInfo(m_fileName).absolutePath(), QFileInfo(m_fileName).fileName() };
    if (m_fileName.isEmpty()) {
        request.folder.clear();
        if (Frame::frmMDI* main = Frame::frmMDI::Current())
            request.folder = main->CommonDialogFolder;
    }
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
    if (!choice || choice->path.isEmpty())
        return false;
    QString path = choice->path;
    if (QFileInfo(path).suffix().isEmpty())
        path += u".qnp"_s;
    return SaveTo(path);
}

void frmOrmsey::ExportGraphFile()
{
    grdData->EndCellEdit();
    const Frame::FileDialogRequest request { GetResString(exportTitle), ExportFilter(), 1,
        QString(), QString() };
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
    if (!choice || choice->path.isEmpty())
        return;
    QString path = choice->path;
    if (QFileInfo(path).suffix().isEmpty()) {
        static const QStringList extensions { u".emf"_s, u".png"_s, u".svg"_s, u".pdf"_s };
        path += extensions.value(choice->filterIndex - 1, extensions[0]);
    }
    const QString error = ExportPictureFile(*m_graph, path);
    if (!error.isEmpty())
        ReportError(error);
}

void frmOrmsey::CopyGraph()
{
    grdData->EndCellEdit();
    const std::unique_ptr<Emf::Picture> picture = m_graph->CopyPicture();
    if (!picture || !picture->isValid())
        return;
    auto* data = new QMimeData;
    data->setData(u"image/x-emf"_s, picture->bytes());
    // Programs that take no metafiles paste the picture at twice its size, for print.
    data->setImageData(
        Emf::RenderPicture(*picture, QSize(m_graph->Width(), m_graph->Height()) * 2));
    QGuiApplication::clipboard()->setMimeData(data);
}

void frmOrmsey::ChooseTextStyle()
{
    const std::optional<QFont> chosen
        = Frame::CurrentPrompts().font(QFont(m_graph->GraphFont(), 12));
    if (!chosen)
        return;
    const QString before = m_graph->GraphFont();
    m_graph->GraphFont(chosen->family());
    if (m_graph->GraphFont() != before)
        SetChanged(true);
    RefreshPicture();
}

void frmOrmsey::SetGraphType(int type)
{
    grdData->EndCellEdit();
    if (type != m_graph->GraphType()) {
        m_graph->GraphType(type);
        SetChanged(true);
    }
    UpdateGridHeadings();
    UpdateMenus();
    RefreshPicture();
}

void frmOrmsey::SetGraph3D(bool on)
{
    if (on != m_graph->Graph3D()) {
        m_graph->Graph3D(on);
        SetChanged(true);
    }
    UpdateMenus();
    RefreshPicture();
}

void frmOrmsey::ShowOptions()
{
    grdData->EndCellEdit();
    m_options->ShowOptions();
}

void frmOrmsey::Sort(int column)
{
    grdData->EndCellEdit();
    m_graph->SortGraph(column);
    SetChanged(true);
    GetDataFromGraphObject();
}

void frmOrmsey::EditDataSeries()
{
    grdData->EndCellEdit();
    frmEditDataSeries dialog(*m_graph, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SetChanged(true);
    UpdateGridHeadings();
    UpdateMenus();
    RefreshPicture();
}

void frmOrmsey::UpdateGridHeadings()
{
    GridModel->UpdateHeadings();
}

void frmOrmsey::GetDataFromGraphObject()
{
    txtGraphTitle->setText(m_graph->GraphTitle());
    txtXAxisLabel->setText(m_graph->HorizontalAxisLabel());
    txtYAxisLabel->setText(m_graph->VerticalAxisLabel());
    GridModel->Refresh();
    UpdateGridHeadings();
    UpdateMenus();
    RefreshPicture();
}

void frmOrmsey::UpdateMenus()
{
    const int type = m_graph->GraphType();
    const bool xy = m_graph->XYPlot();
    for (int index = 0; index < 4; ++index) {
        Action(531 + index)->setChecked(index == type);
        Action(toolbarKey + 555 + index)->setChecked(index == type);
    }
    for (QAction* make3D : { Action(536), Action(toolbarKey + 559) }) {
        make3D->setEnabled(m_graph->CanBe3D());
        make3D->setChecked(m_graph->Graph3D());
    }
    Action(545)->setEnabled(type < Graph::Scattergram && !xy);
}

void frmOrmsey::RefreshPicture()
{
    picGraph->update();
}

void frmOrmsey::TakeTitle()
{
    if (txtGraphTitle->text() == m_graph->GraphTitle())
        return;
    m_graph->GraphTitle(txtGraphTitle->text());
    SetChanged(true);
    RefreshPicture();
}

void frmOrmsey::TakeAxisLabels()
{
    bool changed = false;
    if (txtXAxisLabel->text() != m_graph->HorizontalAxisLabel()) {
        m_graph->HorizontalAxisLabel(txtXAxisLabel->text());
        changed = true;
    }
    if (txtYAxisLabel->text() != m_graph->VerticalAxisLabel()) {
        m_graph->VerticalAxisLabel(txtYAxisLabel->text());
        changed = true;
    }
    if (!changed)
        return;
    SetChanged(true);
    RefreshPicture();
}

void frmOrmsey::PrintGraph()
{
    grdData->EndCellEdit();
    TakeTitle();
    TakeAxisLabels();
    frmOrmseyPrint dialog(this);
    dialog.exec();
}

void frmOrmsey::PrintGraphOn(bool printData, bool landscape)
{
    const PrintTable table = PrintTableOf(*m_graph, txtXAxisLabel->text(), txtYAxisLabel->text());
    const PrintPicture page = BuildPrintPicture(*m_graph, table, printData, landscape);
    if (!page.Picture)
        return;
    QPrinter printer(QPrinter::HighResolution);
    const QString printerName = Frame::CurrentPrinterName();
    if (!printerName.isEmpty())
        printer.setPrinterName(printerName);
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(windowTitle());
    QPainter painter;
    if (!painter.begin(&printer)) {
        ReportError(GetResString(unknownErrorText) + QString::number(printerError));
        return;
    }
    const QRectF target = FitFromTopLeft(QSizeF(page.Width, page.Height),
        printer.pageLayout().paintRectPixels(printer.resolution()).size());
    Emf::PlayPicture(*page.Picture, painter, target);
    painter.end();
}

bool frmOrmsey::AskToSave()
{
    grdData->EndCellEdit();
    TakeTitle();
    TakeAxisLabels();
    if (!IsChanged())
        return true;
    const Frame::MessageAnswer answer = Frame::CurrentPrompts().message(
        GetResString(notSavedText) + u"\n"_s + GetResString(saveQuestionText), MainCaption(),
        Frame::MessageIcon::Exclamation, Frame::MessageButtons::YesNoCancel);
    switch (answer) {
    case Frame::MessageAnswer::Yes:
        return FileSave();
    case Frame::MessageAnswer::No:
        SetChanged(false);
        return true;
    default:
        return false;
    }
}

bool frmOrmsey::queryClose()
{
    if (!AskToSave())
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

std::optional<QString> frmOrmsey::DroppedGraphFile(const QMimeData* data)
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

void frmOrmsey::dragEnterEvent(QDragEnterEvent* event)
{
    if (DroppedGraphFile(event->mimeData())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->ignore();
    }
}

void frmOrmsey::dragMoveEvent(QDragMoveEvent* event)
{
    if (DroppedGraphFile(event->mimeData())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->ignore();
    }
}

bool frmOrmsey::DropFile(const QMimeData* data)
{
    const std::optional<QString> path = DroppedGraphFile(data);
    if (!path)
        return false;
    if (AskToSave())
        OpenGraphFile(*path);
    return true;
}

void frmOrmsey::dropEvent(QDropEvent* event)
{
    if (!DroppedGraphFile(event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DropFile(event->mimeData());
}

} // namespace Ormsey
