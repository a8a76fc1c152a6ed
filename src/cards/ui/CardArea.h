#pragma once

#include <QRect>
#include <QWidget>

namespace Bramlet {

// The card itself, inside the card window: every control sits on it at its place in twips
// turned into pixels. While the fields are being edited it marks the chosen field control
// with a blue rectangle 30 twips outside its bounds.
class CardArea : public QWidget
{
    Q_OBJECT

public:
    explicit CardArea(QWidget* parent = nullptr);

    // Pixels at this widget's resolution.
    int pixels(double twips) const;
    QRect pixels(const QRect& twips) const;
    int twips(int pixels) const;

    // The control rectangle to mark, in pixels; an empty one marks nothing.
    void setSelection(const QRect& control);
    QRect selection() const { return m_selection; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect m_selection;
};

} // namespace Bramlet
