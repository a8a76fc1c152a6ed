#pragma once

#include "frame/DocumentWindow.h"

#include <QList>
#include <QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QToolBar;

namespace Frame {
class DocumentHost;
}

namespace Ormsey {

class DataGrid;
class DataGridModel;
class Graph;
class GraphDocument;
class GraphOptionWindows;
class PictureBox;

// The window's menu items by their string numbers.
namespace GraphMenu {
inline constexpr int File = 500;
inline constexpr int New = 501;
inline constexpr int Open = 502;
inline constexpr int Close = 503;
inline constexpr int Save = 505;
inline constexpr int SaveAs = 506;
inline constexpr int ExportGraph = 507;
inline constexpr int Print = 509;
inline constexpr int Exit = 511;
inline constexpr int Edit = 520;
inline constexpr int CopyGraph = 521;
inline constexpr int TextStyle = 523;
inline constexpr int GraphKind = 530;
inline constexpr int BarChart = 531; // to Scattergram, in the order of the graph types
inline constexpr int Scattergram = 534;
inline constexpr int Make3D = 536;
inline constexpr int Options = 538;
inline constexpr int GraphTools = 539;
inline constexpr int Data = 540;
inline constexpr int SortByName = 541;
inline constexpr int SortByNumber = 542;
inline constexpr int RestoreSort = 543;
inline constexpr int EditDataSeries = 545;
inline constexpr int Help = 420;
inline constexpr int About = 421;
} // namespace GraphMenu

// The toolbar buttons by their string numbers. They share numbers with nothing else, but
// Action() keys them apart from the menu items all the same.
namespace GraphToolbar {
inline constexpr int Open = 551;
inline constexpr int Save = 552;
inline constexpr int Print = 553;
inline constexpr int BarChart = 555; // to Scattergram, in the order of the graph types
inline constexpr int Scattergram = 558;
inline constexpr int Make3D = 559;
inline constexpr int Options = 561;
inline constexpr int Key = 1000; // added to a button's number in Action()
} // namespace GraphToolbar

// The graph plotter's window: a view of one GraphDocument. It shows the title, the axis
// labels and the data grid beside the picture, forwards every command to the document and
// answers the document's one changed() notification with one Refresh.
class frmOrmsey : public QMainWindow, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    // The host gives the window the frame's dialogs, icons and commands; it outlives the
    // window. Without one (tests) those menu items do nothing.
    explicit frmOrmsey(Frame::DocumentHost* host = nullptr, QWidget* parent = nullptr);
    ~frmOrmsey() override;

    // Frame::DocumentWindow: an empty name starts a new graph, any other opens that file.
    void setFileName(const QString& fileName) override;
    QString fileName() const override;
    bool queryClose() override;

    GraphDocument& Document() { return *m_document; }
    Graph& GraphObject();

    // Hands a running cell edit and the title and label boxes to the document.
    void CommitEdits();
    // Everything shown, from the document: boxes, grid, headings, menus, picture, caption.
    void Refresh();
    // The print dialog, then the page on the chosen printer.
    void PrintGraph();
    // The tools palette beside the window.
    void ShowGraphTools();

    QLabel* lblGraphTitle = nullptr;
    QLineEdit* txtGraphTitle = nullptr;
    QLabel* lblXAxisLabel = nullptr;
    QLineEdit* txtXAxisLabel = nullptr;
    QLabel* lblYAxisLabel = nullptr;
    QLineEdit* txtYAxisLabel = nullptr;
    DataGrid* grdData = nullptr;
    DataGridModel* GridModel = nullptr;
    PictureBox* picGraph = nullptr;
    QSplitter* splitter = nullptr;
    QToolBar* tbrToolbar = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuGraph = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // A menu item by its GraphMenu number, or a toolbar button by GraphToolbar::Key plus its
    // number; nullptr for any other number.
    QAction* Action(int id) const;

    // Room for the grid's first columns beside a readable picture when the main window
    // places a new graph window.
    QSize sizeHint() const override { return { 940, 560 }; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildInputArea();
    void buildMenus();
    void buildToolbar();
    QAction* addMenuItem(QMenu* menu, int id);
    // Commits open edits, then runs the document command.
    template <typename Command> void forward(Command command);
    void copyGraph();
    void chooseTextStyle();
    void editDataSeries();

    Frame::DocumentHost* m_host;
    GraphDocument* m_document;
    GraphOptionWindows* m_options = nullptr;
    QList<std::pair<int, QAction*>> m_actions;
    bool m_refreshing = false;
};

} // namespace Ormsey
