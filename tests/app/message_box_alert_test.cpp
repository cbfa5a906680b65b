// The alert as the toolkit shows it.
#include "app/message_box_alert.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QProxyStyle>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace tilora::app {
namespace {

using updater::AlertAnswer;

class ShownAlert : public testing::Test {
 public:
  std::optional<AlertAnswer> answer;

  /// An event loop would have come to delete the boxes that are closed.
  void TearDown() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  QMessageBox& show(const std::string& version = "1.4") {
    alert_.show(updater::alertFor(version), [this, token = token_](AlertAnswer given) { answer = given; });
    EXPECT_FALSE(answer) << "the answer did not wait for the user";
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    EXPECT_NE(box, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(box));
    return *box;
  }
  QAbstractButton& button(QMessageBox& box, const QString& text) {
    const auto buttons = box.buttons();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const QAbstractButton* each) { return each->text() == text; });
    EXPECT_NE(found, buttons.end());
    return **found;
  }
  bool isHeld() const { return token_.use_count() > 1; }

 private:
  const bool isOffscreen_ = qputenv("QT_QPA_PLATFORM", "offscreen");
  int argumentCount_ = 1;
  std::array<char, 5> name_ = {'t', 'e', 's', 't', '\0'};
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  QApplication application_{argumentCount_, arguments_.data()};
  std::shared_ptr<int> token_ = std::make_shared<int>();
  MessageBoxAlert alert_;
};

TEST_F(ShownAlert, HasItsTextsAndAnIconThatInforms) {
  const QMessageBox& box = show();
  EXPECT_EQ(box.text(), "<b>Update Available</b>");
  EXPECT_EQ(box.informativeText(), "<span>A new version (1.4) is available. Would you like to download it?</span>");
  EXPECT_EQ(box.icon(), QMessageBox::Information);
}

TEST_F(ShownAlert, IsInFrontAndModalToTheProgram) {
  const QMessageBox& box = show();
  EXPECT_TRUE(box.isVisible());
  EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
  EXPECT_TRUE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(ShownAlert, ShowsTheTagsOfAVersionAsTheyAre) {
  const QString informative = show("<img src=x> & </span>").informativeText();
  EXPECT_TRUE(informative.contains("(&lt;img src=x&gt; &amp; &lt;/span&gt;)")) << informative.toStdString();
  EXPECT_TRUE(Qt::mightBeRichText(informative)) << "the text would be shown with its entities";
}

TEST_F(ShownAlert, EndsWithTheButtonThatIsClicked) {
  QTest::mouseClick(&button(show(), "Download"), Qt::LeftButton);
  EXPECT_EQ(answer, AlertAnswer::firstButton);
  answer.reset();
  QTest::mouseClick(&button(show(), "Cancel"), Qt::LeftButton);
  EXPECT_EQ(answer, AlertAnswer::secondButton);
}

TEST_F(ShownAlert, EndsWithTheFirstButtonOnReturnAndWithTheSecondOnEscapeOrWhenItIsClosed) {
  QTest::keyClick(&show(), Qt::Key_Return);
  EXPECT_EQ(answer, AlertAnswer::firstButton);
  answer.reset();
  QTest::keyClick(&show(), Qt::Key_Escape);
  EXPECT_EQ(answer, AlertAnswer::secondButton);
  answer.reset();
  show().close();
  EXPECT_EQ(answer, AlertAnswer::secondButton);
}

TEST_F(ShownAlert, LetsTheEventLoopGoOn) {
  show();
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++ticks; });
  timer.start(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 3; }));
  EXPECT_FALSE(answer);
}

TEST_F(ShownAlert, ReleasesWhatItWasGivenWhenItEnds) {
  QMessageBox& box = show();
  EXPECT_TRUE(isHeld());
  box.close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !isHeld(); }));
  EXPECT_FALSE(box.isVisible());
  EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::topLevelWidgets().isEmpty(); }));
}

TEST_F(ShownAlert, ItsNativeWindowIsHiddenFirstHoweverItEnds) {
  const std::vector<std::function<void(QMessageBox&)>> ends = {
      [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); },
      [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); },
      [this](QMessageBox& box) { QTest::mouseClick(&button(box, "Download"), Qt::LeftButton); },
      [](QMessageBox& box) { box.windowHandle()->close(); },
      [](QMessageBox& box) { box.close(); },
  };
  for (const auto& end : ends) {
    QMessageBox& box = show();
    end(box);
    ASSERT_TRUE(answer);
    answer.reset();
    EXPECT_FALSE(box.windowHandle()->isVisible());
    EXPECT_NE(box.windowHandle()->handle(), nullptr);
  }
}

TEST_F(ShownAlert, SaysThatItComesWhileNothingIsShownYet) {
  std::vector<bool> shown;
  MessageBoxAlert other([&] { shown.push_back(QApplication::activeModalWidget() != nullptr); });
  EXPECT_TRUE(shown.empty());
  other.show(updater::alertFor("1.4"), [](AlertAnswer) {});
  EXPECT_EQ(shown, std::vector<bool>{false});
}

TEST_F(ShownAlert, GoesWithItsOwner) {
  {
    MessageBoxAlert other;
    other.show(updater::alertFor("1.4"), [this](AlertAnswer given) { answer = given; });
    EXPECT_NE(QApplication::activeModalWidget(), nullptr);
  }
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_FALSE(answer);
}

/// A desktop with its own order of buttons.
class LayoutStyle : public QProxyStyle {
 public:
  explicit LayoutStyle(int layout) : layout_(layout) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override {
    return hint == SH_DialogButtonLayout ? layout_ : QProxyStyle::styleHint(hint, option, widget, data);
  }

 private:
  int layout_;
};

TEST_F(ShownAlert, HasItsButtonsInOneOrderOnEveryDesktop) {
  for (const int layout : {QDialogButtonBox::WinLayout, QDialogButtonBox::MacLayout, QDialogButtonBox::KdeLayout,
                           QDialogButtonBox::GnomeLayout, QDialogButtonBox::AndroidLayout}) {
    QApplication::setStyle(std::make_unique<LayoutStyle>(layout).release());
    QMessageBox& box = show();
    EXPECT_LT(button(box, "Download").x(), button(box, "Cancel").x()) << layout;
    box.close();
    answer.reset();
  }
}

}  // namespace
}  // namespace tilora::app
