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
    if (system.language() == QLocale::C) {
        // Made once: finding a locale by language and country costs more than most of the
        // conversions that ask for it, and an export asks once a cell.
        static const QLocale british(QLocale::English, QLocale::UnitedKingdom);
        return british;
    }
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
