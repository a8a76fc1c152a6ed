#pragma once

#include "frame/ChangeBatch.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

class QMimeData;

namespace Frame {
class DocumentHost;
}

// The document pattern, which every kind of document follows (the card document over the card
// database and its card set, the sheet document over its Sheet, copy this shape):
//
// - A document object owns its model, its file name and its changed state, and knows no
//   widgets, so quorbin-cli and the tests drive the very code the window runs.
// - Every change reaches the model through the document, by one of its commands or by one of
//   the model's own events, and ends in exactly one changed() notification. Nothing else
//   refreshes anything.
// - The window is a view: it forwards what the user does to the document, first handing over
//   any edit still open in a box of its own, and answers changed() with one refresh of
//   everything it shows.
// - Opening, saving and exporting are the document's; dialogs and messages go through the
//   Prompts seam, and a failure is reported here and keeps what the document had.
// - What the document needs of the frame (where dialogs start, the frame's caption) comes from
//   the DocumentHost its window was given; without one (quorbin-cli, tests) it still works.
namespace Ormsey {

class Graph;

// The headings of the data grid: "X", "Y" while the graph plots x-y pairs (a scattergram, or
// a line graph whose categories are all numbers), else "Categories" and one heading per
// series label in use.
QStringList GridHeadings(Graph& graph);

// One graph as a document of the graph window.
class GraphDocument : public QObject
{
    Q_OBJECT

public:
    explicit GraphDocument(Frame::DocumentHost* host = nullptr, QObject* parent = nullptr);
    ~GraphDocument() override;

    // The graph shown. Producers (the count window, tests) may fill it directly and then call
    // GraphEdited.
    Graph& GraphObject() { return *m_graph; }
    const QString& FileName() const { return m_fileName; }
    // Unsaved changes.
    bool IsChanged() const { return m_changed; }
    // "Ormsey - Weather.qnp"; empty for a graph that has no file yet.
    QString Caption() const;

    // Edits. Each marks the document changed when it changes something, then notifies once.
    void SetGraphTitle(const QString& title);
    void SetAxisLabels(const QString& horizontal, const QString& vertical);
    // Only cells under a heading hold data that is drawn and saved: any other cell, or text
    // equal to the cell's, is refused with false.
    bool SetCell(int row, int column, const QString& text);
    void SetGraphType(int type);
    void SetGraph3D(bool on);
    void SetGraphFont(const QString& face);
    // Column 0 or 1 sorts by names or numbers, -1 restores the order of entry.
    void Sort(int column);
    // The graph was changed directly (the data series editor, a producer filling it).
    void GraphEdited();

    // The heading row of the data grid; only the columns under a heading are in use.
    QStringList Headings();

    // Opens a graph file into this document, starting from an initialised graph. A file that
    // cannot be read leaves the document as it was; a damaged one keeps what could be read.
    // Either way the user is told. False on any failure. Comma-separated text (".csv") fills
    // the graph as a new, unsaved one, or is refused whole and changes nothing.
    bool Open(const QString& path);
    // File > Open: offers to save a changed graph, then the open dialog.
    bool OpenWithDialog();
    // Save acts as Save As while the graph has no file. False when not saved.
    bool Save();
    bool SaveAs();
    // The picture as a metafile, PNG, SVG or PDF file chosen in the export dialog.
    bool Export();
    // The question before a changed graph is closed or replaced: Yes saves, No drops the
    // changes; false when the user cancels (or saving fails).
    bool AskToSave();

    // The one file a drop may bring: a single file whose name ends in "qnp" in any case.
    static std::optional<QString> DroppedGraphFile(const QMimeData* data);
    // Opens a dropped graph file after offering to save; false when the data are refused.
    bool Drop(const QMimeData* data);

signals:
    // Anything of the document changed: the model, the file name or the changed state.
    void changed();

private:
    void notify();
    void edited(bool didChange);
    void setChanged(bool changed);
    bool saveTo(const QString& path);
    bool openCommaSeparated(const QByteArray& bytes, const QString& name);
    QString dialogFolder() const;

    Frame::DocumentHost* m_host;
    std::unique_ptr<Graph> m_graph;
    QString m_fileName;
    bool m_changed = false;
    Frame::ChangeBatch m_changes;
};

} // namespace Ormsey
