#include "frame/ui/GuardedApplication.h"

#include "frame/support/ScriptedPrompts.h"
#include "platform/runtime/Error.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

// The test programs run under the suite's own application object.
TEST(GuardedApplication, AnErrorEscapingASlotIsShownAndTheProgramGoesOn)
{
    ASSERT_NE(qobject_cast<Frame::GuardedApplication*>(QCoreApplication::instance()), nullptr);
    ScriptedPrompts prompts;
    for (int message = 0; message < 3; ++message)
        prompts.answerMessage(Frame::MessageAnswer::Ok);

    QWidget window;
    auto* box = new QLineEdit(&window);
    box->setText(u"unsaved work"_s);
    auto* button = new QPushButton(u"Go"_s, &window);
    QObject::connect(button, &QPushButton::clicked, [] { throw Runtime::Error(6); });
    window.show();
    QTest::mouseClick(button, Qt::LeftButton);
    QTimer::singleShot(0, [] { throw std::bad_alloc(); });
    QTimer::singleShot(0, [] { throw std::runtime_error("no number"); });
    QCoreApplication::processEvents();

    EXPECT_EQ(prompts.messages(),
        (QStringList { u"An unknown error occured: 6"_s, u"An unknown error occured: 7"_s,
            u"An unknown error occured: 51"_s }));
    EXPECT_EQ(prompts.calls()[0].icon, Frame::MessageIcon::Exclamation);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(box->text(), u"unsaved work"_s);
    // Events after the failure are delivered as before.
    QTest::keyClicks(box, u"!"_s);
    EXPECT_EQ(box->text(), u"unsaved work!"_s);
}

} // namespace
