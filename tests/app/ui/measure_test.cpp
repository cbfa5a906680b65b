// The measures of the windows as they are meant, drawn beside the windows as they are, and compared one by one. The pictures are those of
// the documents.
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <set>

#include "app/ui/theme.h"
#include "pictures.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;

/// The drawing with the measures: each call compares one of them with the running item, and draws it as it is meant to be. Where an item
/// begins is taken from the window when no measure says it.
class Drawing {
 public:
  explicit Drawing(QQuickItem& root) : root_(root), picture_(sizeOf(root) * scale, QImage::Format_RGB32) {
    picture_.setDevicePixelRatio(scale);
    picture_.fill(QColor(0xFB, 0xFA, 0xF6));
    painter_.begin(&picture_);
    painter_.setRenderHint(QPainter::Antialiasing);
  }

  void width(QQuickItem& item, double meant) {
    EXPECT_EQ(item.width(), meant) << nameOf(item);
    const QRectF place = within(item, root_);
    const double y = place.top() + 3;
    painter_.setPen(QPen(measure, 0.75));
    painter_.drawLine(QPointF(place.right() - meant, y), QPointF(place.right(), y));
    label(item, {place.right() - 12, y + 5}, QString::number(meant));
  }

  /// The free edges around an item, left and right and above it.
  void inset(QQuickItem& outer, QQuickItem& inner, double horizontal, double vertical) {
    const QRectF actual = within(inner, outer);
    EXPECT_EQ(actual.left(), horizontal) << nameOf(inner);
    EXPECT_EQ(outer.width() - actual.right(), horizontal) << nameOf(inner);
    EXPECT_EQ(actual.top(), vertical) << nameOf(inner);
    const QRectF whole = within(outer, root_);
    QPainterPath band;
    band.addRect(whole);
    band.addRect(whole.adjusted(horizontal, vertical, -horizontal, -(outer.height() - actual.bottom())));
    painter_.fillPath(band, QColor(255, 140, 0, 60));
    label(inner, {whole.left() + horizontal / 2, whole.center().y()}, QString::number(horizontal));
    label(inner, {whole.left() + whole.width() * 0.7, whole.top() + vertical / 2}, QString::number(vertical));
  }

  void gap(QQuickItem& upper, QQuickItem& lower, double meant) {
    const QRectF above = within(upper, root_);
    EXPECT_EQ(within(lower, root_).top() - above.bottom(), meant) << nameOf(lower);
    const QRectF band(above.left(), above.bottom(), above.width(), meant);
    painter_.fillRect(band, QColor(60, 130, 255, 50));
    label(lower, band.center(), QString::number(meant));
  }

  /// A rounded rectangle; a negative radius means round ends, a line of opacity 0 none.
  void shape(QQuickItem& item, double radius, double fill, double line) {
    const QRectF place = within(item, root_);
    const double corner = radius < 0 ? place.height() / 2 : radius;
    EXPECT_EQ(number(item, "radius"), corner) << nameOf(item);
    EXPECT_NEAR(share(item, "color"), fill, tolerance) << nameOf(item);
    if (line > 0) {
      EXPECT_NEAR(share(item, "outlineColor"), line, tolerance) << nameOf(item);
      EXPECT_EQ(number(item, "outlineWidth"), 1) << nameOf(item);
    }
    painter_.setPen(QPen(line > 0 ? ink : QColor(0, 0, 0, 60), 0.75));
    painter_.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    QString text = QStringLiteral("r %1, %2").arg(radius < 0 ? QStringLiteral("½") : QString::number(radius), QString::number(fill));
    if (line > 0) text += QStringLiteral(", line ") + QString::number(line);
    // Small ones have no room for it.
    constexpr double leastHeight = 40;
    label(item,
          place.height() < leastHeight ? QPointF(place.center().x(), place.bottom() + 5) : QPointF(place.left() + 60, place.bottom() - 5),
          text);
  }

  void type(QQuickItem& item, int size, QFont::Weight weight, bool monospaced = false) {
    EXPECT_EQ(font(item).pixelSize(), size) << nameOf(item);
    EXPECT_EQ(font(item).weight(), weight) << nameOf(item);
    EXPECT_EQ(item.property("monospaced").toBool(), monospaced) << nameOf(item);
    QFont meant(monospaced ? Theme().monospacedFamily() : QGuiApplication::font().family());
    meant.setPixelSize(size);
    meant.setWeight(weight);
    painter_.setFont(meant);
    painter_.setPen(ink);
    const QRectF place = within(item, root_);
    painter_.drawText(place.adjusted(0, 0, 1, 1), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, item.property("text").toString());
    const char* name = weight == QFont::DemiBold ? " semibold" : weight == QFont::Medium ? " medium" : "";
    const double end = place.left() + std::min(number(item, "contentWidth"), place.width());
    label(item, monospaced ? QPointF(place.left() - 32, place.center().y()) : QPointF(end + 24, place.top() + 4),
          QString::number(size) + QLatin1String(name));
  }

  /// The drawing on the left, the window on the right.
  QImage beside(const QImage& window) {
    painter_.end();
    QImage both(picture_.width() + window.width(), window.height(), QImage::Format_RGB32);
    picture_.setDevicePixelRatio(1);
    QImage right = window;
    right.setDevicePixelRatio(1);
    QPainter painter(&both);
    painter.drawImage(0, 0, picture_);
    painter.drawImage(picture_.width(), 0, right);
    return both;
  }

 private:
  static constexpr int scale = 2;
  static constexpr QColor ink = QColor(0x30, 0x30, 0x38);
  static constexpr QColor measure = QColor(0xC0, 0x20, 0x10);

  static QSize sizeOf(const QQuickItem& item) { return QSizeF(item.width(), item.height()).toSize(); }
  static std::string nameOf(const QQuickItem& item) { return item.objectName().toStdString(); }

  /// Said once of items of one name.
  void label(const QQuickItem& item, const QPointF& center, const QString& text) {
    if (!said_.insert(nameOf(item) + text.toStdString()).second) return;
    QFont small = QGuiApplication::font();
    small.setPixelSize(7);
    painter_.setFont(small);
    painter_.setPen(measure);
    painter_.drawText(QRectF(center.x() - 60, center.y() - 6, 120, 12), Qt::AlignCenter, text);
  }

  QQuickItem& root_;
  QImage picture_;
  QPainter painter_;
  std::set<std::string> said_;
};

TEST(Measures, OfTheMenu) {
  InterfaceSession session;
  session.engine().advance(250ms);
  QQuickItem& menu = session.openMenu();
  const QImage window = pictureOf(*session.interface().menuPanel());
  Drawing drawing(menu);
  QQuickItem& actions = find(menu, "actions");
  drawing.width(menu, 420);
  drawing.inset(menu, find(menu, "content"), 15, 7);
  drawing.shape(find(actions, "background"), 12, 0.45, 0.35);
  drawing.inset(actions, find(actions, "stack"), 12, 12);
  drawing.type(find(actions, "title"), 13, QFont::DemiBold);
  for (int i = 0; i < 6; ++i) {
    QQuickItem& row = find(menu, ("row" + std::to_string(i)).c_str());
    drawing.shape(find(row, "background"), 10, 0.6, 0.25);
    drawing.inset(row, find(row, "label"), 10, 8);
    drawing.type(find(row, "rowTitle"), 13, QFont::Medium);
    drawing.type(find(row, "rowSubtitle"), 11, QFont::Normal);
    QQuickItem& capsule = find(row, "shortcutCapsule");
    if (!capsule.isVisible()) continue;
    drawing.inset(capsule, find(capsule, "shortcut"), 7, 4);
    drawing.shape(find(capsule, "capsule"), -1, 0.8, 0.45);
    drawing.type(find(capsule, "shortcut"), 11, QFont::Medium, true);
  }
  drawing.gap(actions, find(menu, "footer"), 12);
  drawing.type(find(find(menu, "footer"), "lineText"), 12, QFont::Medium);
  expectLikePicture(drawing.beside(window), QStringLiteral("measures-menu.png"));
}

TEST(Measures, OfTheSettings) {
  InterfaceSession session;
  QQuickItem& view = session.openSettings();
  const QImage window = pictureOf(*session.interface().settingsWindow());
  Drawing drawing(view);
  drawing.width(view, 640);
  EXPECT_EQ(view.height(), 633);
  drawing.inset(view, find(view, "content"), 22, 22);
  drawing.type(find(view, "title"), 26, QFont::DemiBold);
  drawing.type(find(view, "subtitle"), 11, QFont::Normal);
  for (const char* name : {"general", "shortcuts"}) {
    QQuickItem& section = find(view, name);
    drawing.shape(find(section, "background"), 14, 0.45, 0.35);
    drawing.inset(section, find(section, "stack"), 18, 18);
    drawing.type(find(section, "title"), 17, QFont::DemiBold);
  }
  for (const char* name : {"paddingRow", "loginRow"}) {
    drawing.type(find(find(view, name), "settingTitle"), 14, QFont::Medium);
    drawing.type(find(find(view, name), "settingDescription"), 10, QFont::Normal);
  }
  drawing.width(find(view, "stepper"), 150);
  drawing.width(find(view, "stepperLabel"), 64);
  for (int i = 0; i < 4; ++i) {
    QQuickItem& row = find(view, ("shortcut" + std::to_string(i)).c_str());
    QQuickItem& combination = find(row, "combination");
    drawing.type(find(row, "shortcutTitle"), 14, QFont::Medium);
    drawing.inset(combination, find(combination, "binding"), 10, 6);
    drawing.shape(find(combination, "combinationBackground"), 8, 0.7, 0);
    drawing.type(find(combination, "binding"), 13, QFont::Normal, true);
  }
  drawing.type(find(view, "hint"), 10, QFont::Normal);
  expectLikePicture(drawing.beside(window), QStringLiteral("measures-settings.png"));
}

}  // namespace
}  // namespace tilora::app

int main(int argc, char** argv) { return tilora::app::runPictureTests(argc, argv); }
