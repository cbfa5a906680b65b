// The symbols: that they are there, inside their square, and crisp.
#include "app/ui/symbols.h"

#include <gtest/gtest.h>

#include <QImage>

#include "app/ui/interface_session.h"
#include "controller/menu_model.h"

namespace tilora::app {
namespace {

constexpr double side = 16;

/// How dark each pixel is, from 0 to 255, at a scale.
QImage drawn(const QString& name, double ratio) {
  const int pixels = static_cast<int>(side * ratio);
  QImage image(pixels, pixels, QImage::Format_Grayscale8);
  image.fill(Qt::black);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(ratio, ratio);
  painter.fillPath(symbolPath(name, side, ratio), Qt::white);
  return image;
}

int level(const QImage& image, int x, int y) { return qGray(image.pixel(x, y)); }

TEST(Symbols, EveryOneIsDrawnInsideItsSquare) {
  EXPECT_EQ(symbolNames().size(), 10);
  for (const QString& name : symbolNames()) {
    const QRectF bounds = symbolPath(name, side, 1).boundingRect();
    EXPECT_GT(bounds.width(), side / 2) << name.toStdString();
    EXPECT_TRUE(QRectF(0, 0, side, side).contains(bounds)) << name.toStdString();
  }
}

TEST(Symbols, NoTwoAreAlike) {
  for (const QString& one : symbolNames()) {
    for (const QString& other : symbolNames()) {
      if (one == other) continue;
      EXPECT_NE(drawn(one, 2), drawn(other, 2)) << one.toStdString() << " " << other.toStdString();
    }
  }
}

TEST(Symbols, EveryRowOfTheMenuHasOne) {
  InterfaceSession session;
  for (const MenuRow& row : MenuModel(session.controller(), [] {}).rows()) {
    EXPECT_TRUE(symbolNames().contains(QString::fromStdString(row.symbol))) << row.symbol;
  }
}

TEST(Symbols, AnUnknownNameDrawsNothing) { EXPECT_TRUE(symbolPath(QStringLiteral("circle.hexagon"), side, 1).isEmpty()); }

/// Along the middle row and the middle column, the frames' edges are full or empty: no pixel is half covered.
TEST(Symbols, FramesHaveNoBlurredEdgeAtAnyUsualScale) {
  for (const char* name :
       {"square.lefthalf.filled", "square.righthalf.filled", "rectangle.inset.filled", "rectangle.center.inset.filled"}) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
      const QImage image = drawn(QString::fromLatin1(name), ratio);
      const int middle = image.width() / 2;
      for (int i = 0; i < image.width(); ++i) {
        for (const int value : {level(image, i, middle), level(image, middle, i)}) {
          EXPECT_TRUE(value < 8 || value > 247) << name << " at " << ratio << ", pixel " << i << ": " << value;
        }
      }
    }
  }
}

}  // namespace
}  // namespace tilora::app
