#include "platform/runtime/HostLocale.h"

namespace Runtime {

namespace {
std::optional<QLocale>& forcedLocale()
{
    static std::optional<QLocale> locale;
    return locale;
}
} // namespace

QLocale HostLocale()
{
    if (forcedLocale())
        return *forcedLocale();
    QLocale system = QLocale::system();
    if (system.language() == QLocale::C)
        return QLocale(QLocale::English, QLocale::UnitedKingdom);
    return system;
}

QString CurrencySymbol()
{
    return HostLocale().currencySymbol(QLocale::CurrencySymbol);
}

ScopedHostLocale::ScopedHostLocale(const QLocale& locale)
    : m_previous(forcedLocale())
{
    forcedLocale() = locale;
}

ScopedHostLocale::~ScopedHostLocale()
{
    forcedLocale() = m_previous;
}

} // namespace Runtime
