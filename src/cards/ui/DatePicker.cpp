#include "cards/ui/DatePicker.h"

#include "platform/runtime/Dates.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

double SerialOfDateTime(const QDateTime& moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    return Runtime::JoinDateSerial(
        { date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second() });
}

QDateTime DateTimeOfSerial(double serial)
{
    const Runtime::DateTimeParts parts = Runtime::SplitDateSerial(
        std::clamp(serial, Runtime::FirstDateSerial, Runtime::LastDateSerial));
    return QDateTime(
        QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second));
}

DatePicker::DatePicker(QWidget* parent)
    : QWidget(parent)
{
    chkNull = new QCheckBox;
    chkNull->setObjectName(u"chkNull"_s);
    dtpValue = new QDateTimeEdit;
    dtpValue->setObjectName(u"dtpValue"_s);
    dtpValue->setCalendarPopup(true);
    // The earliest moment stands for "no date" and shows as an empty box.
    dtpValue->setMinimumDateTime(QDateTime(QDate(100, 1, 1), QTime(0, 0)));
    dtpValue->setSpecialValueText(u" "_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(chkNull);
    layout->addWidget(dtpValue, 1);
    setFocusProxy(dtpValue);
    setFieldFormat({});
    connect(chkNull, &QCheckBox::toggled, this, [this](bool checked) {
        if (m_showing)
            return;
        const double today = SerialOfDateTime(QDateTime(QDate::currentDate(), QTime(0, 0)));
        emit valueEdited(!checked, today);
    });
    connect(dtpValue, &QDateTimeEdit::dateTimeChanged, this, [this] {
        if (!m_showing && !m_null)
            emit valueEdited(false, serial());
    });
}

void DatePicker::setFieldFormat(const QString& format)
{
    // The field formats name days, months, years, hours, minutes and seconds with the letters
    // the date box reads the same way; anything else shows the date.
    static const QRegularExpression plain(u"^[dMyHhms:/ .,-]+$"_s);
    dtpValue->setDisplayFormat(plain.match(format).hasMatch() ? format : u"dd MMM yyyy"_s);
}

void DatePicker::setValue(bool null, double value)
{
    m_showing = true;
    m_null = null;
    chkNull->setChecked(false);
    chkNull->setVisible(null);
    dtpValue->setEnabled(!null);
    dtpValue->setDateTime(null ? dtpValue->minimumDateTime() : DateTimeOfSerial(value));
    m_showing = false;
}

double DatePicker::serial() const
{
    return SerialOfDateTime(dtpValue->dateTime());
}

void DatePicker::setReadOnly(bool readOnly)
{
    dtpValue->setReadOnly(readOnly);
    chkNull->setEnabled(!readOnly);
}

} // namespace Bramlet
