#pragma once

#include <QWidget>

class QCheckBox;
class QDateTimeEdit;

namespace Bramlet {

// A card's date field: a date and time box with the check box that stands for Null. The box is
// shown (and cleared) only while the field is Null; ticking it gives the field today's date.
// Values are day serials, as the card file keeps them.
class DatePicker : public QWidget
{
    Q_OBJECT

public:
    explicit DatePicker(QWidget* parent = nullptr);

    // `format` is the field's FieldFormat ("dd MMM yyyy", "HH:mm" ...); an empty or named one
    // shows the date.
    void setFieldFormat(const QString& format);
    // Shows a value without telling anyone.
    void setValue(bool null, double serial);
    bool isNull() const { return m_null; }
    double serial() const;
    void setReadOnly(bool readOnly);

    QCheckBox* chkNull = nullptr;
    QDateTimeEdit* dtpValue = nullptr;

signals:
    // The user changed the value.
    void valueEdited(bool null, double serial);

private:
    bool m_null = true;
    bool m_showing = false;
};

// The day serial of a moment and back; outside the valid dates the nearest valid one.
double SerialOfDateTime(const QDateTime& moment);
QDateTime DateTimeOfSerial(double serial);

} // namespace Bramlet
