#pragma once

#include "frame/DocumentWindow.h"

#include <QList>
#include <QMainWindow>
#include <memory>
#include <optional>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QMimeData;
class QSplitter;
class QToolBar;

namespace Ormsey {

class DataGrid;
class DataGridModel;
class Graph;
class GraphOptionWindows;
class PictureBox;

// The graph plotter's document window: one Graph, an input area (title, axis labels and the
// data grid) beside a picture of the graph, with its own menus and toolbar. It opens, saves,
// exports, copies and prints the graph and asks to save on closing. The document's changed
// flag lives in the frame's document table, in the slot named by the window's Tag; a window
// made outside the main window keeps it by itself.
class frmOrmsey : public QMainWindow, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    explicit frmOrmsey(QWidget* parent = nullptr);
    ~frmOrmsey() override;

    // Frame::DocumentWindow: an empty name starts a new graph, any other opens that file.
    void setFileName(const QString& fileName) override;
    QString fileName() const override { return m_fileName; }
    bool queryClose() override;

    QString FileName() const { return m_fileName; }
    Graph& GraphObject() { return *m_graph; }

    // The heading row from the graph (called on PlotTypeChanged, after a type change and
    // after editing series).
    void UpdateGridHeadings();
    // Title, labels and grid from the graph, then headings, menus and picture: producers of
    // graphs call it after filling GraphObject.
    void GetDataFromGraphObject();
    // The print dialog; its OK prints through PrintGraphOn.
    void PrintGraph();
    // Prints the graph on the current printer, the data table too when asked.
    void PrintGraphOn(bool printData, bool landscape);

    // The commands, for the menus, the toolbar and tests.
    void OpenGraphFile(const QString& path);
    void FileOpen();
    bool FileSave();
    bool FileSaveAs();
    void ExportGraphFile();
    void CopyGraph();
    void ChooseTextStyle();
    void SetGraphType(int type);
    void SetGraph3D(bool on);
    void ShowOptions();
    void Sort(int column);
    void EditDataSeries();

    bool IsChanged() const;
    void SetChanged(bool changed);
    // The menus and toolbar buttons that depend on the graph: type, 3D, options, series.
    void UpdateMenus();
    // The one file a drop may bring: a single file whose name ends in "qnp" in any case.
    static std::optional<QString> DroppedGraphFile(const QMimeData* data);
    // Opens a dropped graph file (after offering to save a changed graph); false when the
    // data are refused.
    bool DropFile(const QMimeData* data);

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
    // By string id: 501 to 545 (menus) and 551 to 561 (toolbar buttons, keyed 1551 to 1561).
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
    void RefreshPicture();
    void TakeTitle();
    void TakeAxisLabels();
    int Slot() const;
    bool SaveTo(const QString& path);
    void SetCaption();
    // Offers to save a changed graph; false when the user cancels.
    bool AskToSave();

    std::unique_ptr<Graph> m_graph;
    GraphOptionWindows* m_options = nullptr;
    QString m_fileName;
    bool m_changed = false;
    QList<std::pair<int, QAction*>> m_actions;
};

} // namespace Ormsey
