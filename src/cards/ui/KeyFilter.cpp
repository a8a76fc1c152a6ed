#include "cards/ui/KeyFilter.h"

#include "frame/Helpers.h"

#include <QKeyEvent>

namespace Bramlet {

KeyFilter::KeyFilter(const QString& mode, QObject* parent)
    : QObject(parent)
    , m_mode(mode)
{ }

bool KeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        // Only printable characters are keys the classic filter saw; shortcuts pass.
        const bool typed = text.size() == 1 && text[0].isPrint()
            && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (typed && Frame::NumericKeyFilter(text[0].unicode(), m_mode) == 0)
            return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Bramlet
