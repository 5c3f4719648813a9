#include "viewer/window/column_header.h"

#include "cmdline/encodings.h"

#include <QCoreApplication>
#include <QPainter>
#include <QStringList>
#include <algorithm>

namespace
{

constexpr int inset = 6;

QString describe_line_ends(const LineEndCounts& counts)
{
    QStringList kinds;
    const auto add = [&](std::size_t count, const QString& name) {
        if (count > 0)
            kinds.append(name);
    };
    add(counts.lf, QStringLiteral("LF"));
    add(counts.crlf, QStringLiteral("CRLF"));
    add(counts.cr, QStringLiteral("CR"));
    QString text = kinds.join(QStringLiteral(" + "));
    if (counts.none > 0)
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) +
                QCoreApplication::translate("ColumnHeader", "no final line end");
    return text;
}

QFont bold(QFont font)
{
    font.setBold(true);
    return font;
}

} // namespace

QString describe(const Text& text)
{
    QStringList facts;
    facts.append(QString::fromLatin1(encoding_types[text.encoding()]).toUpper());
    facts.append(text.has_mark()
                     ? QCoreApplication::translate("ColumnHeader", "byte-order mark")
                     : QCoreApplication::translate("ColumnHeader", "no byte-order mark"));
    if (text.line_count() == 0)
        facts.append(QCoreApplication::translate("ColumnHeader", "empty"));
    else
        facts.append(describe_line_ends(text.line_ends()));
    return facts.join(QStringLiteral("  \u00b7  "));
}

ColumnHeader::ColumnHeader(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ColumnHeader::show_contributor(const QString& shown_name, const QString& shown_path,
                                    const QString& shown_facts)
{
    name = shown_name;
    path = shown_path == shown_name ? QString() : shown_path;
    facts = shown_facts;
    setToolTip(QStringLiteral("<p style='white-space:pre'>") +
               (name + '\n' + shown_path + '\n' + facts).toHtmlEscaped() + QStringLiteral("</p>"));
    setAccessibleName(name);
    setAccessibleDescription(shown_path + QStringLiteral(", ") + facts);
    update();
}

QSize ColumnHeader::sizeHint() const
{
    return {200, fontMetrics().height() * 2 + inset + inset};
}

QSize ColumnHeader::minimumSizeHint() const
{
    return {40, sizeHint().height()};
}

void ColumnHeader::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QFontMetrics plain = fontMetrics();
    const QFontMetrics strong(bold(font()));
    const int room = width() - 2 * inset;
    const QRect upper(inset, inset / 2 + 1, room, strong.height());
    const QRect lower(inset, upper.bottom() + 2, room, plain.height());
    const QColor text = palette().color(QPalette::WindowText);
    painter.setPen(text);
    painter.setFont(bold(font()));
    const QString shown = strong.elidedText(name, Qt::ElideMiddle, room);
    painter.drawText(upper, Qt::AlignVCenter | Qt::TextSingleLine, shown);
    painter.setFont(font());
    const int facts_width = std::min(plain.horizontalAdvance(facts), room);
    painter.drawText(lower, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     plain.elidedText(facts, Qt::ElideRight, room));
    const int left = room - facts_width - 3 * inset;
    if (left > plain.averageCharWidth() * 8)
        painter.drawText(lower, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine,
                         plain.elidedText(path, Qt::ElideMiddle, left));
}
