#include "frame/ui/PrintSetupDialog.h"

#include "frame/FrameSettings.h"

#include <QPrinterInfo>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::PrintSetupDialog;

namespace {

TEST(PrintSetupDialog, OkAcceptsWithTheOrientationCancelRejects)
{
    PrintSetupDialog printing(nullptr, PrintSetupDialog::Orientation::Shown);
    printing.show();
    printing.cmbPrinters->setCurrentIndex(printing.cmbPrinters->count() - 1);
    printing.optLandscape->click();
    QTest::mouseClick(printing.cmdOK, Qt::LeftButton);
    EXPECT_EQ(printing.result(), QDialog::Accepted);
    EXPECT_TRUE(printing.isLandscape());
    EXPECT_FALSE(printing.isVisible());

    // OK takes the entry shown: here the "PDF File" at the end of the list.
    EXPECT_TRUE(Frame::Settings().PrintToPdfFile);
    Frame::Settings().PrintToPdfFile = false;

    PrintSetupDialog cancelled;
    cancelled.show();
    QTest::mouseClick(cancelled.cmdCancel, Qt::LeftButton);
    EXPECT_EQ(cancelled.result(), QDialog::Rejected);
    EXPECT_FALSE(cancelled.isLandscape());
}

} // namespace
