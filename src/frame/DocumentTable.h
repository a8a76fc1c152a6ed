#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

namespace Frame {

// One open document. The model knows no widgets, so the window is held as a QObject; it
// becomes empty by itself if the window is destroyed without releasing its slot.
struct DocumentSlot
{
    int DocType = 0; // 1 graph, 2 Velkin, 3 card database, 4 Sprondle, 5 spreadsheet
    QPointer<QObject> Form;
    bool Free = true;
    bool Changed = false;
};

// The frame-wide table of open documents. A window's slot index is stable for the window's
// lifetime (it is written into the window's Tag), so the table never shrinks: closed slots
// are marked free and reused by the next document.
class DocumentTable
{
public:
    // One free slot, as after start-up.
    DocumentTable();

    void reset();

    // The first free slot from index 0 upward, else a new slot at the end; marked in use,
    // unchanged, with no window yet. Returns its index.
    int claimSlot(int docType);
    void setForm(int index, QObject* form);
    void setChanged(int index, bool changed);
    // A closing window gives its slot back: free, unchanged, no window.
    void release(int index);

    int size() const { return int(m_slots.size()); }
    // An index outside the table (a window with a damaged Tag) reads as a free slot and is
    // ignored by the setters above.
    DocumentSlot slot(int index) const;
    bool isValidIndex(int index) const { return index >= 0 && index < m_slots.size(); }

private:
    QList<DocumentSlot> m_slots;
};

} // namespace Frame
