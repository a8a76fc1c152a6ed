#include "frame/DocumentTable.h"

namespace Frame {

DocumentTable::DocumentTable()
{
    reset();
}

void DocumentTable::reset()
{
    m_slots = { DocumentSlot {} };
}

int DocumentTable::claimSlot(int docType)
{
    qsizetype index = 0;
    while (index < m_slots.size() && !m_slots[index].Free)
        ++index;
    if (index == m_slots.size())
        m_slots.append(DocumentSlot {});
    DocumentSlot& slot = m_slots[index];
    slot.DocType = docType;
    slot.Form = nullptr;
    slot.Free = false;
    slot.Changed = false;
    return int(index);
}

void DocumentTable::setForm(int index, QObject* form)
{
    if (isValidIndex(index))
        m_slots[index].Form = form;
}

void DocumentTable::setChanged(int index, bool changed)
{
    if (isValidIndex(index))
        m_slots[index].Changed = changed;
}

void DocumentTable::release(int index)
{
    if (!isValidIndex(index))
        return;
    DocumentSlot& slot = m_slots[index];
    slot.Free = true;
    slot.Changed = false;
    slot.Form = nullptr;
}

DocumentSlot DocumentTable::slot(int index) const
{
    return isValidIndex(index) ? m_slots[index] : DocumentSlot {};
}

} // namespace Frame
