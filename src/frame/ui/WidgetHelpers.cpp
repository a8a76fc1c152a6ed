#include "frame/ui/WidgetHelpers.h"

#include "resources/StringTable.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>

namespace Frame {

namespace {

// The part of the window the program lays its controls in.
QWidget* InnerArea(QWidget* window)
{
    if (auto* mainWindow = qobject_cast<QMainWindow*>(window)) {
        if (mainWindow->centralWidget() != nullptr) {
            // A window not yet shown has not placed its central widget.
            if (mainWindow->layout() != nullptr)
                mainWindow->layout()->activate();
            return mainWindow->centralWidget();
        }
    }
    return window;
}

} // namespace

void SetMenuCaptions(const QList<QAction*>& items, int firstId)
{
    for (qsizetype index = 0; index < items.size(); ++index) {
        QAction* item = items[index];
        if (item == nullptr)
            continue;
        const QString caption = GetResString(firstId + int(index));
        // A separator keeps no text: some styles print it beside the line.
        const bool separator = caption == u"-";
        item->setSeparator(separator);
        item->setText(separator ? QString() : caption);
    }
}

void LocaliseControls(QWidget* window)
{
    if (window == nullptr)
        return;
    const QList<QWidget*> controls = window->findChildren<QWidget*>();
    for (QWidget* control : controls) {
        bool isNumber = false;
        const int id = control->property("Tag").toString().trimmed().toInt(&isNumber);
        if (!isNumber)
            continue;
        const QString caption = GetResString(id);
        if (auto* button = qobject_cast<QAbstractButton*>(control))
            button->setText(caption);
        else if (auto* label = qobject_cast<QLabel*>(control))
            label->setText(caption);
        else if (auto* group = qobject_cast<QGroupBox*>(control))
            group->setTitle(caption);
        else
            control->setWindowTitle(caption);
    }
}

void SetClientHeight(QWidget* window, int size)
{
    if (window == nullptr)
        return;
    const int inner = InnerArea(window)->height();
    window->resize(window->width(), window->height() + size - inner);
}

void SetClientWidth(QWidget* window, int size)
{
    if (window == nullptr)
        return;
    const int inner = InnerArea(window)->width();
    window->resize(window->width() + size - inner, window->height());
}

} // namespace Frame
