// The dialog that asks for consent: its look, its keys and its answers.
#include "app/ui/consent_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "app/ui/interface_session.h"
#include "app/ui/qml_module.h"
#include "app/ui/theme.h"

namespace tilora::app {
namespace {

class ConsentDialog : public testing::Test {
 protected:
  QQuickItem& open(const QStringList& missing = {}) {
    window = std::make_unique<ConsentWindow>(*engine, missing);
    QObject::connect(window.get(), &ConsentWindow::answered, window.get(), [this](bool agreed) { answers.push_back(agreed); });
    window->show();
    turn();
    return *window->rootObject();
  }
  void key(Qt::Key key) { InterfaceSession::tap(*window, key); }

  std::vector<bool> answers;
  std::unique_ptr<QQmlEngine> engine = makeEngine();
  std::unique_ptr<ConsentWindow> window;
};

TEST_F(ConsentDialog, IsADialogOfOneSize) {
  const QQuickItem& view = open();
  EXPECT_EQ(window->title(), "Tilora");
  EXPECT_EQ(window->type(), Qt::Dialog);
  EXPECT_EQ(window->size(), view.size().toSize());
  EXPECT_EQ(window->minimumSize(), window->maximumSize());
}

TEST_F(ConsentDialog, HasTheDesignOfTheSettings) {
  const QQuickItem& view = open();
  QQuickItem& content = find(view, "content");
  constexpr int padding = 22;
  EXPECT_EQ(within(find(view, "picture"), view).topLeft(), QPointF(padding, padding));
  EXPECT_EQ(content.y(), padding);
  EXPECT_EQ(view.width() - within(content, view).right(), padding);
  EXPECT_EQ(view.height() - within(content, view).bottom(), padding);
  EXPECT_EQ(find(view, "background").property("color").value<QColor>(), Theme().windowBackground());
  expectText(find(view, "title"), "Let Tilora arrange your windows?", 17, QFont::DemiBold);
  expectText(find(view, "explanation"),
             "Tilora shows one window or a pair on each screen and hides the rest. They return when you switch to them, or when you quit.",
             13, QFont::Normal);
  EXPECT_TRUE(find(view, "explanation").property("secondary").toBool());
  QQuickItem& start = find(view, "start");
  EXPECT_EQ(text(start, "title"), "Start");
  EXPECT_TRUE(start.property("filled").toBool());
  EXPECT_EQ(within(start, view).right(), view.width() - padding);
  EXPECT_EQ(text(find(view, "refuse"), "title"), "Not Now");
}

TEST_F(ConsentDialog, ReturnStartsAndEscapeDoesNot) {
  open();
  key(Qt::Key_Return);
  open();
  key(Qt::Key_Escape);
  EXPECT_THAT(answers, testing::ElementsAre(true, false));
}

TEST_F(ConsentDialog, OnlyTheFirstAnswerCounts) {
  open();
  key(Qt::Key_Escape);
  key(Qt::Key_Return);
  EXPECT_THAT(answers, testing::ElementsAre(false));
}

TEST_F(ConsentDialog, AButtonThatTheKeyboardIsOnIsPressed) {
  open();
  key(Qt::Key_Tab);
  key(Qt::Key_Return);
  open();
  key(Qt::Key_Tab);
  key(Qt::Key_Tab);
  key(Qt::Key_Space);
  EXPECT_THAT(answers, testing::ElementsAre(false, true));
}

TEST_F(ConsentDialog, AClickAnswers) {
  InterfaceSession::click(find(open(), "refuse"));
  InterfaceSession::click(find(open(), "start"));
  EXPECT_THAT(answers, testing::ElementsAre(false, true));
}

TEST_F(ConsentDialog, SaysWhatIsMissingAndHasNothingToAgreeTo) {
  const QQuickItem& view = open({QStringLiteral("There is no window manager."), QStringLiteral("This is a <b>Wayland</b> session.")});
  expectText(find(view, "title"), "Tilora cannot arrange windows in this session.", 17, QFont::DemiBold);
  EXPECT_FALSE(find(view, "explanation").isVisible());
  EXPECT_FALSE(find(view, "start").isVisible());
  EXPECT_EQ(text(find(find(view, "missing0"), "lineText")), "There is no window manager.");
  EXPECT_EQ(text(find(find(view, "missing1"), "lineText")), "This is a <b>Wayland</b> session.");
  EXPECT_EQ(text(find(view, "refuse"), "title"), "Close");
  key(Qt::Key_Return);
  EXPECT_THAT(answers, testing::ElementsAre(false));
}

}  // namespace
}  // namespace tilora::app
