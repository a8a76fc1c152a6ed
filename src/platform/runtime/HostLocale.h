#pragma once

#include <QLocale>
#include <QString>
#include <optional>

namespace Runtime {

// The locale that dates, currency and separators follow: the system's, except that the C/POSIX
// locale (a bare container, a test run, a cron job) counts as English (United Kingdom), the
// language of the program's own texts.
QLocale HostLocale();

// The locale's currency symbol ("£" for en_GB), read where the program starts and whenever a
// text is checked for a leading symbol.
QString CurrencySymbol();

// Forces HostLocale() for as long as the object lives; tests use it to check other locales.
// Nesting restores the previous forced locale. Not for use across threads.
class ScopedHostLocale
{
public:
    explicit ScopedHostLocale(const QLocale& locale);
    ~ScopedHostLocale();
    ScopedHostLocale(const ScopedHostLocale&) = delete;
    ScopedHostLocale& operator=(const ScopedHostLocale&) = delete;

private:
    std::optional<QLocale> m_previous;
};

} // namespace Runtime
