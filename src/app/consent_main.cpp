// The consent dialog: exit status 0 when the user chose to start, 1 when not. Its arguments are sentences that say what the session lacks;
// with any, it shows those and the answer is no.
#include <QApplication>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>

namespace {

/// A screen with a pair of windows, in the colours of the user's theme.
QPixmap pairSymbol(const QWidget& widget, int side) {
  const qreal ratio = widget.devicePixelRatioF();
  QPixmap symbol(QSize(side, side) * ratio);
  symbol.setDevicePixelRatio(ratio);
  symbol.fill(Qt::transparent);
  QPainter painter(&symbol);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const qreal unit = side / 16.0;
  painter.setBrush(widget.palette().color(QPalette::WindowText));
  painter.drawRoundedRect(QRectF(0, 2 * unit, 16 * unit, 12 * unit), 2 * unit, 2 * unit);
  painter.setBrush(widget.palette().color(QPalette::Highlight));
  painter.drawRoundedRect(QRectF(1.5 * unit, 3.5 * unit, 6 * unit, 9 * unit), unit, unit);
  painter.setBrush(widget.palette().color(QPalette::Base));
  painter.drawRoundedRect(QRectF(8.5 * unit, 3.5 * unit, 6 * unit, 9 * unit), unit, unit);
  return symbol;
}

bool askToStart(QMessageBox& box) {
  box.setText(QStringLiteral("<b>Let Tilora arrange your windows?</b>"));
  box.setInformativeText(
      QStringLiteral("Tilora shows one window or a pair on each screen and hides the rest. They return when you switch to them, or when "
                     "you quit."));
  auto* start = box.addButton(QStringLiteral("Start"), QMessageBox::AcceptRole);
  box.addButton(QStringLiteral("Not Now"), QMessageBox::RejectRole);
  box.setDefaultButton(start);
  box.exec();
  return box.clickedButton() == start;
}

void sayWhatIsMissing(QMessageBox& box, const QStringList& sentences) {
  box.setText(QStringLiteral("<b>Tilora cannot arrange windows in this session.</b>"));
  box.setTextFormat(Qt::AutoText);
  box.setInformativeText(sentences.join(QStringLiteral("\n")));
  box.addButton(QMessageBox::Close);
  box.exec();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tilora"));
  QApplication::setApplicationDisplayName(QStringLiteral("Tilora"));
  QMessageBox box;
  box.setWindowTitle(QStringLiteral("Tilora"));
  box.setIconPixmap(pairSymbol(box, 48));
  box.setWindowIcon(box.iconPixmap());
  const QStringList missing = QApplication::arguments().mid(1);
  if (missing.isEmpty()) return askToStart(box) ? 0 : 1;
  sayWhatIsMissing(box, missing);
  return 1;
}
