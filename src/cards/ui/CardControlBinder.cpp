#include "cards/ui/CardControlBinder.h"

#include "cards/CardDocument.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/DatePicker.h"
#include "cards/ui/frmBramlet.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTextEdit>
#include <QUrl>

namespace Bramlet {

namespace {

QPixmap PictureOf(const QByteArray& bytes, const QSize& box)
{
    QPixmap picture;
    if (bytes.isEmpty() || !picture.loadFromData(bytes))
        return {};
    // Fitted, never enlarged.
    if (picture.width() > box.width() || picture.height() > box.height())
        picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}

} // namespace

CardControlBinder::CardControlBinder(frmBramlet& window, CardDocument& document)
    : m_window(window)
    , m_document(document)
{ }

bool CardControlBinder::Rebuild()
{
    if (m_layoutVersion == m_document.LayoutVersion())
        return false;
    for (QWidget* widget : std::as_const(m_widgets.Made)) {
        // Gone for good now (a name search must not find it), deleted once the event that
        // led here is over.
        widget->hide();
        widget->setObjectName(QString());
        widget->deleteLater();
    }
    FixedCardWidgets fixed { m_window.txtName, m_window.txtFreeText, m_window.picPicture, {} };
    for (QLineEdit* keyword : std::as_const(m_window.txtKeyWord))
        fixed.txtKeyWord.append(keyword);
    m_widgets = BuildCardLayout(m_window.picCard, m_document.Controls(), fixed);
    for (QWidget* widget : std::as_const(m_widgets.Made)) {
        const auto found = std::find(m_widgets.Controls.begin(), m_widgets.Controls.end(), widget);
        if (found != m_widgets.Controls.end())
            connectControl(static_cast<int>(found - m_widgets.Controls.begin()), widget);
    }
    m_layoutVersion = m_document.LayoutVersion();
    return true;
}

void CardControlBinder::connectControl(int index, QWidget* widget)
{
    const CardControl& control = m_document.Controls()[static_cast<size_t>(index)];
    switch (control.Kind) {
    case ControlKind::TextField:
        connect(qobject_cast<QLineEdit*>(widget), &QLineEdit::textEdited, this,
            [this, index](const QString& text) { m_document.SetControlText(index, text); });
        break;
    case ControlKind::DatePicker:
        connect(qobject_cast<DatePicker*>(widget), &DatePicker::valueEdited, this,
            [this, index](
                bool null, double serial) { m_document.SetControlDate(index, null, serial); });
        break;
    case ControlKind::CheckBox:
        connect(qobject_cast<QCheckBox*>(widget), &QCheckBox::clicked, this,
            [this, index](bool checked) { m_document.SetControlChecked(index, checked); });
        break;
    case ControlKind::DropDown: {
        auto* list = qobject_cast<QComboBox*>(widget);
        connect(list, &QComboBox::activated, this, [this, index, list](int item) {
            m_document.SetControlText(index, list->itemText(item));
        });
        break;
    }
    case ControlKind::WebAddress:
    case ControlKind::Resource:
        connect(
            qobject_cast<QAbstractButton*>(widget), &QAbstractButton::clicked, this, [this, index] {
                const CardControl& shown = m_document.Controls()[static_cast<size_t>(index)];
                if (!shown.Text.isEmpty())
                    QDesktopServices::openUrl(shown.Kind == ControlKind::WebAddress
                            ? QUrl::fromUserInput(shown.Text)
                            : QUrl::fromLocalFile(shown.Text));
            });
        break;
    default:
        break;
    }
    // While the fields are edited a press on a field control chooses and drags it.
    widget->installEventFilter(this);
    for (QWidget* child : widget->findChildren<QWidget*>())
        child->installEventFilter(this);
}

void CardControlBinder::ShowView(int view)
{
    const bool sprondle = view == SprondleView;
    const auto& controls = m_document.Controls();
    for (size_t index = 0; index < controls.size(); ++index) {
        if (!m_widgets.Made.contains(m_widgets.Controls[index]))
            continue;
        m_widgets.Controls[index]->setVisible(sprondle && controls[index].Visible);
        if (m_widgets.Labels[index] != nullptr)
            m_widgets.Labels[index]->setVisible(sprondle);
    }
}

void CardControlBinder::ShowValues(bool readOnly)
{
    const auto& controls = m_document.Controls();
    for (size_t index = 0; index < controls.size(); ++index) {
        const CardControl& control = controls[index];
        QWidget* widget = m_widgets.Controls[index];
        if (widget == nullptr)
            continue;
        switch (control.Kind) {
        case ControlKind::Name:
        case ControlKind::TextField:
        case ControlKind::Keyword: {
            auto* box = qobject_cast<QLineEdit*>(widget);
            if (box->text() != control.Text)
                box->setText(control.Text);
            if (control.Kind != ControlKind::Keyword) {
                box->setReadOnly(readOnly);
            } else if (control.ArrayIndex >= 0 && control.ArrayIndex < 6) {
                // The same keyword under its key picture in the Velkin view.
                m_window.lblKeyPicture[control.ArrayIndex]->setText(control.Text);
                QLabel* picture = m_window.picKeyPicture[control.ArrayIndex];
                picture->setPixmap(PictureOf(control.KeyPicture, picture->size()));
            }
            break;
        }
        case ControlKind::FreeText: {
            QTextEdit* text = m_window.txtFreeText;
            if (text->toPlainText() != control.Text)
                text->setPlainText(control.Text);
            text->setReadOnly(readOnly);
            break;
        }
        case ControlKind::CheckBox:
            qobject_cast<QCheckBox*>(widget)->setChecked(control.Checked);
            widget->setEnabled(!readOnly);
            break;
        case ControlKind::DropDown: {
            auto* list = qobject_cast<QComboBox*>(widget);
            list->setCurrentIndex(control.Text.isEmpty() ? -1 : list->findText(control.Text));
            widget->setEnabled(!readOnly);
            break;
        }
        case ControlKind::DatePicker: {
            auto* picker = qobject_cast<DatePicker*>(widget);
            picker->setValue(control.Null, control.Date);
            picker->setReadOnly(readOnly);
            break;
        }
        case ControlKind::WebAddress:
        case ControlKind::Resource:
            widget->setToolTip(control.Text);
            break;
        case ControlKind::Picture:
            break;
        }
    }
    QLabel* picture = m_window.picPicture;
    picture->setPixmap(PictureOf(m_document.PictureBytes(), picture->size()));
}

QWidget* CardControlBinder::ControlWidget(int control) const
{
    return control >= 0 && static_cast<size_t>(control) < m_widgets.Controls.size()
        ? m_widgets.Controls[static_cast<size_t>(control)]
        : nullptr;
}

QLabel* CardControlBinder::LabelWidget(int control) const
{
    return control >= 0 && static_cast<size_t>(control) < m_widgets.Labels.size()
        ? m_widgets.Labels[static_cast<size_t>(control)]
        : nullptr;
}

bool CardControlBinder::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_document.FieldEditing())
        return QObject::eventFilter(watched, event);
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove
        && type != QEvent::MouseButtonRelease && type != QEvent::MouseButtonDblClick)
        return QObject::eventFilter(watched, event);
    CardArea* card = m_window.picCard;
    auto* widget = qobject_cast<QWidget*>(watched);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint onCard
        = widget != nullptr ? widget->mapTo(card, mouse->position().toPoint()) : QPoint();
    if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        // The field control the press landed on (or inside).
        for (size_t index = 0; index < m_widgets.Controls.size(); ++index) {
            QWidget* control = m_widgets.Controls[index];
            if (control != nullptr && m_widgets.Made.contains(control)
                && (control == widget || control->isAncestorOf(widget))) {
                m_document.SelectControl(static_cast<int>(index));
                m_dragged = static_cast<int>(index);
                m_dragStart = onCard;
                break;
            }
        }
    } else if (type == QEvent::MouseButtonRelease && m_dragged >= 0) {
        const int dragged = std::exchange(m_dragged, -1);
        if ((onCard - m_dragStart).manhattanLength() >= QApplication::startDragDistance())
            m_document.MoveField(dragged, card->twips(onCard.x()), card->twips(onCard.y()));
    }
    // Nothing of a control is edited while the card is being designed.
    return true;
}

} // namespace Bramlet
