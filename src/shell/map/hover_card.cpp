#include "shell/map/hover_card.h"

#include <QPainter>
#include <cmath>

#include "map/geometry.h"
#include "map/ties.h"
#include "map/units.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

constexpr int CardMargin = 8;
/// Between labels and values.
constexpr int LabelGap = 12;
/// Most that a text of the card takes, pixels: longer ones are cut.
constexpr int WidestText = 240;

QFont TitleFont(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace

HoverCard::HoverCard(core::Program& running, std::function<map::Scene()> scene, QWidget* owner)
    : QWidget(owner), program(running), makeScene(std::move(scene)) {
  setObjectName(QStringLiteral("HoverCard"));
  // The map keeps the pointer and the keyboard.
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  rest.setSingleShot(true);
  rest.setInterval(RestMs);
  connect(&rest, &QTimer::timeout, this, [this] { Guarded(program.Log, "HoverCard", [this] { Show(); }); });
  hide();
}

std::optional<map::Aircraft> HoverCard::Under() const {
  if (!pointer || !program.State.Extras.PLOTCARD) return std::nullopt;
  const map::SurfacePoint at{pointer->x() * map::UnitsPerPixelX, pointer->y() * map::UnitsPerPixelY};
  return map::AircraftAt(makeScene(), at, std::nullopt);
}

void HoverCard::Await() {
  rest.stop();
  hide();
  aircraft = Under();
  if (aircraft) rest.start();
}

void HoverCard::PointTo(QPointF place) {
  pointer = place;
  const std::optional<map::Aircraft> under = Under();
  if (!aircraft || !under || !(*under == *aircraft)) {
    Await();
  } else if (isVisible()) {
    Fit();
  }
}

void HoverCard::Leave() {
  pointer.reset();
  aircraft.reset();
  rest.stop();
  hide();
}

void HoverCard::Follow() {
  if (!pointer) return;
  // What was under the pointer is told apart from others by the place where it is now.
  if (aircraft) map::FindAircraft(makeScene(), program.State.Ties.Tracks, *aircraft);
  const std::optional<map::Aircraft> under = Under();
  if (!aircraft || !under || !(*under == *aircraft)) {
    Await();
  } else if (isVisible()) {
    Update();
  }
}

void HoverCard::Show() {
  if (!aircraft) return;
  Update();
}

void HoverCard::Update() {
  std::optional<map::PlotCard> now = map::CardOf(makeScene(), program.State.Ties, *aircraft);
  if (!now) return hide();
  const bool same = isVisible() && *now == card;
  card = std::move(*now);
  if (!same) update();
  Fit();
  raise();
  show();
}

int HoverCard::LineHeight() const { return fontMetrics().height() + 2; }

void HoverCard::Fit() {
  const QFontMetrics title(TitleFont(font()));
  int wide = qMin(WidestText, title.horizontalAdvance(FromBytes(card.Title)));
  labels = 0;
  int values = 0;
  for (const map::PlotCard::Row& row : card.Rows) {
    labels = qMax(labels, fontMetrics().horizontalAdvance(FromBytes(row.Label)));
    values = qMax(values, qMin(WidestText, fontMetrics().horizontalAdvance(FromBytes(row.Value))));
  }
  wide = qMax(wide, labels + LabelGap + values);
  resize(wide + 2 * CardMargin + 1, (static_cast<int>(card.Rows.size()) + 1) * LineHeight() + 2 * CardMargin);
  const QSizeF room = parentWidget()->size();
  const map::SurfacePoint at =
      map::CardPlace({pointer->x(), pointer->y()}, {double(width()), double(height())}, {room.width(), room.height()});
  move(static_cast<int>(std::lround(at.X)), static_cast<int>(std::lround(at.Y)));
}

void HoverCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::ToolTipBase));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  const QColor text = palette().color(QPalette::ToolTipText);
  const int right = width() - 2 * CardMargin;
  const auto write = [&](int left, int top, int wide, const QString& words) {
    const QString cut = painter.fontMetrics().elidedText(words, Qt::ElideRight, wide);
    painter.drawText(QRect(left, top, wide, LineHeight()), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, cut);
  };
  painter.setPen(text);
  painter.setFont(TitleFont(font()));
  write(CardMargin, CardMargin, right, FromBytes(card.Title));
  painter.setFont(font());
  int top = CardMargin;
  for (const map::PlotCard::Row& row : card.Rows) {
    top += LineHeight();
    painter.setPen(palette().color(QPalette::PlaceholderText));
    write(CardMargin, top, labels, FromBytes(row.Label));
    painter.setPen(text);
    write(CardMargin + labels + LabelGap, top, right - labels - LabelGap, FromBytes(row.Value));
  }
}

}  // namespace kestrel::shell
