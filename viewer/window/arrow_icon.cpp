#include "viewer/window/arrow_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace
{

/** Unit square, pointing down. */
constexpr qreal left = 0.25;
constexpr qreal right = 0.75;
constexpr qreal middle = 0.5;
constexpr qreal tip = 0.8;
constexpr qreal head = 0.52;
constexpr qreal tail = 0.18;

class ArrowEngine : public QIconEngine
{
  public:
    explicit ArrowEngine(ArrowKind which) : kind(which) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*s*/) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor colour = QGuiApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width(), rect.height());
        if (kind == ArrowKind::up || kind == ArrowKind::top) {
            painter->translate(0, 1);
            painter->scale(1, -1);
        }
        painter->setPen(QPen(colour, 0.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawLine(QPointF(middle, tail), QPointF(middle, tip));
        painter->drawLine(QPointF(left, head), QPointF(middle, tip));
        painter->drawLine(QPointF(right, head), QPointF(middle, tip));
        if (kind == ArrowKind::top || kind == ArrowKind::bottom)
            painter->drawLine(QPointF(left, 0.93), QPointF(right, 0.93));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new ArrowEngine(kind); }

  private:
    ArrowKind kind;
};

} // namespace

QIcon arrow_icon(ArrowKind kind)
{
    return QIcon(new ArrowEngine(kind)); // the icon owns it
}
