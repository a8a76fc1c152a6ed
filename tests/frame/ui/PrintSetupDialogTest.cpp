#include "frame/ui/PrintSetupDialog.h"

#include "frame/FrameSettings.h"

#include <QPrinterInfo>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::PrintSetupDialog;

namespace {

// A document's print dialog as the graph and sheet windows derive theirs.
class OwnPrintDialog : public PrintSetupDialog
{
public:
    OwnPrintDialog()
        : PrintSetupDialog(nullptr, Orientation::Shown)
    { }
    int Printed = 0;

protected:
    void printDocument() override { ++Printed; }
};

TEST(PrintSetupDialog, CaptionsComeFromTheStringTable)
{
    OwnPrintDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), u"Print"_s);
    EXPECT_EQ(dialog.lblPrinters->text(), u"Printer:"_s);
    EXPECT_EQ(dialog.cmdOK->text(), u"OK"_s);
    EXPECT_EQ(dialog.cmdCancel->text(), u"Cancel"_s);
    ASSERT_NE(dialog.fmeOrientation, nullptr);
    EXPECT_EQ(dialog.fmeOrientation->title(), u"&Orientation"_s);
    EXPECT_EQ(dialog.optPortrait->text(), u"&Portrait"_s);
    EXPECT_EQ(dialog.optLandscape->text(), u"&Landscape"_s);
    EXPECT_FALSE(dialog.isLandscape());
}

TEST(PrintSetupDialog, CardDialogHasNoOrientationFrame)
{
    PrintSetupDialog dialog;
    EXPECT_EQ(dialog.fmeOrientation, nullptr);
    EXPECT_FALSE(dialog.isLandscape());
}

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

TEST(PrintSetupDialog, OkPrintsAndClosesCancelDoesNotPrint)
{
    OwnPrintDialog printing;
    printing.cmdOK->setEnabled(true); // as with a printer installed
    printing.show();
    QTest::mouseClick(printing.cmdOK, Qt::LeftButton);
    EXPECT_EQ(printing.Printed, 1);
    EXPECT_EQ(printing.result(), QDialog::Accepted);
    EXPECT_FALSE(printing.isVisible());

    OwnPrintDialog cancelled;
    cancelled.show();
    QTest::mouseClick(cancelled.cmdCancel, Qt::LeftButton);
    EXPECT_EQ(cancelled.Printed, 0);
    EXPECT_EQ(cancelled.result(), QDialog::Rejected);
}

} // namespace
