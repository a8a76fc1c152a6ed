#include "graph/ui/DataGrid.h"

#include "frame/Helpers.h"
#include "graph/Graph.h"
#include "graph/ui/DataGridModel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

// The cell editor's keys. The view installs the delegate as the editor's event filter, so
// the key that opened the editor passes here too.
class CellDelegate : public QStyledItemDelegate
{
public:
    explicit CellDelegate(DataGrid* grid)
        : QStyledItemDelegate(grid)
        , m_grid(grid)
    { }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* editor = qobject_cast<QLineEdit*>(object);
        if (editor == nullptr || event->type() != QEvent::KeyPress)
            return QStyledItemDelegate::eventFilter(object, event);
        const auto* key = static_cast<QKeyEvent*>(event);
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            finish(editor, true);
            m_grid->MoveAfterEnter();
            return true;
        case Qt::Key_Escape:
            finish(editor, false);
            return true;
        case Qt::Key_Up:
            finish(editor, true);
            m_grid->MoveCurrentCell(-1, 0);
            return true;
        case Qt::Key_Down:
            finish(editor, true);
            m_grid->MoveCurrentCell(1, 0);
            return true;
        case Qt::Key_Left:
            if (editor->cursorPosition() > 0 || editor->hasSelectedText())
                return false;
            finish(editor, true);
            m_grid->MoveCurrentCell(0, -1);
            return true;
        case Qt::Key_Right:
            if (editor->cursorPosition() < editor->text().size() || editor->hasSelectedText())
                return false;
            finish(editor, true);
            m_grid->MoveCurrentCell(0, 1);
            return true;
        default:
            break;
        }
        const QString text = key->text();
        if (text.size() == 1 && text[0].isPrint()
            && !DataGrid::AcceptsCharacter(m_grid->currentIndex().column(), text[0]))
            return true;
        return false;
    }

private:
    void finish(QLineEdit* editor, bool commit)
    {
        if (commit)
            emit commitData(editor);
        emit closeEditor(editor, QAbstractItemDelegate::NoHint);
        m_grid->setFocus();
    }

    DataGrid* m_grid;
};

} // namespace

DataGrid::DataGrid(DataGridModel* model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
{
    setModel(model);
    setItemDelegate(new CellDelegate(this));
    setFont(QFont(u"Arial"_s, 10));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
        | QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed);
    setTabKeyNavigation(true);
    horizontalHeader()->setDefaultSectionSize(90);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Interactive);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setColumnWidth(0, 110);
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (state() != EditingState)
            edit(index);
    });
    setCurrentIndex(model->index(0, 0));
}

QWidget* DataGrid::CellEditor() const
{
    return state() == EditingState ? indexWidget(currentIndex()) : nullptr;
}

void DataGrid::EndCellEdit()
{
    if (QWidget* editor = CellEditor()) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

int DataGrid::lastColumn() const
{
    return std::max(int(m_model->Headings().size()) - 1, 0);
}

void DataGrid::MoveCurrentCell(int rowStep, int columnStep)
{
    const QModelIndex current = currentIndex();
    const int row = std::clamp(current.row() + rowStep, 0, Graph::RowCount - 1);
    const int column = std::clamp(current.column() + columnStep, 0, lastColumn());
    setCurrentIndex(model()->index(row, column));
}

void DataGrid::MoveAfterEnter()
{
    const QModelIndex current = currentIndex();
    if (current.column() < lastColumn())
        MoveCurrentCell(0, 1);
    else if (current.row() < Graph::RowCount - 1)
        setCurrentIndex(model()->index(current.row() + 1, 0));
}

bool DataGrid::AcceptsCharacter(int column, QChar character)
{
    if (column == 0)
        return true;
    const char16_t code = character.unicode();
    return code < 128 && Frame::NumericKeyFilter(code, u"D") != 0;
}

void DataGrid::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        MoveAfterEnter();
        return;
    }
    const QString text = event->text();
    if (text.size() == 1 && text[0].isPrint()
        && !AcceptsCharacter(currentIndex().column(), text[0])) {
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace Ormsey
