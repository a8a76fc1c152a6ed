#include "frame/FrameSettings.h"

#include "platform/runtime/HostLocale.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

// $TEMP when set, set but empty meaning "no temporary folder"; else the system's.
QString TemporaryFolder()
{
    if (qEnvironmentVariableIsSet("TEMP"))
        return qEnvironmentVariable("TEMP");
    return QDir::tempPath();
}

} // namespace

FrameSettings& Settings()
{
    static FrameSettings settings;
    return settings;
}

void InitialiseFrame(const QString& programFolder)
{
    FrameSettings& settings = Settings();
    settings.RegistryPath = u"Software\\Pellimore Soft\\Quorbin"_s;
    settings.ColourTable = ReadColourTable(QDir(programFolder).filePath(u"Colours.ini"_s));
    // Cyan, red, yellow, green, blue, magenta.
    settings.DefaultColours = { 0xFFFF00, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFF0000, 0xFF00FF };
    settings.DocumentTable.reset();
    settings.TempFolder = TemporaryFolder();
    settings.PictureTempFile = TempFilePath(u"QBNPicture.tmp");
    settings.CurrencySymbol = Runtime::CurrencySymbol();
    settings.CurrentPrinter.clear();
    settings.PrintToPdfFile = false;
}

QString TempFilePath(QStringView fileName)
{
    const QString& folder = Settings().TempFolder;
    if (folder.isEmpty())
        return {};
    if (folder.endsWith(u'/'))
        return folder + fileName.toString();
    return folder + u'/' + fileName.toString();
}

} // namespace Frame
