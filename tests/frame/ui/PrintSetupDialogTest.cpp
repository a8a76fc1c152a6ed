#include "frame/ui/PrintSetupDialog.h"

#include "frame/FrameSettings.h"

#include <QPrinterInfo>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::PrintSetupDialog;

namespace {

TEST(PrintSetupDialog, ListsThePlatformsPrintersWithTheCurrentOneSelected)
{
    Frame::Settings().CurrentPrinter.clear();
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    PrintSetupDialog dialog;
    if (printers.isEmpty()) {
        ASSERT_EQ(dialog.cmbPrinters->count(), 1);
        EXPECT_EQ(dialog.cmbPrinters->itemText(0), u"No Printers"_s);
        EXPECT_FALSE(dialog.cmbPrinters->isEnabled());
        EXPECT_FALSE(dialog.cmdOK->isEnabled());
        return;
    }
    ASSERT_EQ(dialog.cmbPrinters->count(), printers.size());
    EXPECT_EQ(dialog.cmbPrinters->currentText(), QPrinterInfo::defaultPrinterName());
    EXPECT_TRUE(dialog.cmdOK->isEnabled());
}

TEST(PrintSetupDialog, OkAcceptsWithTheOrientationCancelRejects)
{
    PrintSetupDialog printing(nullptr, PrintSetupDialog::Orientation::Shown);
    printing.cmdOK->setEnabled(true); // as with a printer installed
    printing.show();
    printing.optLandscape->click();
    QTest::mouseClick(printing.cmdOK, Qt::LeftButton);
    EXPECT_EQ(printing.result(), QDialog::Accepted);
    EXPECT_TRUE(printing.isLandscape());
    EXPECT_FALSE(printing.isVisible());

    PrintSetupDialog cancelled;
    cancelled.show();
    QTest::mouseClick(cancelled.cmdCancel, Qt::LeftButton);
    EXPECT_EQ(cancelled.result(), QDialog::Rejected);
    EXPECT_FALSE(cancelled.isLandscape());
}

} // namespace
