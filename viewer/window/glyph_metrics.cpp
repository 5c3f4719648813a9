#include "viewer/window/glyph_metrics.h"

#include <QChar>
#include <cmath>

namespace
{

QFont without_kerning(QFont font)
{
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferDefault);
    return font;
}

int height_of(const QFontMetricsF& metrics, qreal scale)
{
    constexpr int tries = 4; // scales are multiples of a quarter
    const int least = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent())) + 1;
    for (int height = least; height < least + tries; ++height)
        if (std::fmod(height * scale, 1.0) == 0.0)
            return height;
    return least;
}

bool has_no_picture(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_NotAssigned: // noncharacters among them
        return true;
    case QChar::Other_Format: // the joiners belong to the words that they stand in
        return character != 0x200c && character != 0x200d;
    default:
        return false;
    }
}

bool is_of_plain_script(char32_t character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Common:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Armenian:
    case QChar::Script_Georgian:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
        return true;
    case QChar::Script_Hangul:
        return character >= 0x3000; // the letters below join to syllables
    default:
        return false;
    }
}

bool is_of_right_to_left(char32_t character)
{
    const QChar::Direction direction = QChar::direction(character);
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
}

bool joins(char32_t character)
{
    constexpr char32_t emoji = 0x1f000; // many join with what follows
    return QChar::isMark(character) || character >= emoji || character == 0x200c ||
           character == 0x200d;
}

} // namespace

GlyphMetrics::GlyphMetrics(const QFont& wanted, qreal scale, int tab_cells)
    : text_font(without_kerning(wanted)),
      metrics(text_font),
      raw_font(QRawFont::fromFont(text_font)),
      height(height_of(metrics, scale)),
      base_line(static_cast<int>(std::ceil(metrics.ascent()))),
      cell_width(metrics.horizontalAdvance(QChar('0'))),
      tab_width(cell_width * tab_cells),
      monospaced(metrics.horizontalAdvance(QChar('i')) == cell_width &&
                 metrics.horizontalAdvance(QChar('W')) == cell_width)
{
}

qreal GlyphMetrics::tab_end(qreal x) const
{
    return (std::floor(x / tab_width + 1e-6) + 1) * tab_width;
}

Glyph GlyphMetrics::glyph(char32_t character) const
{
    auto& page = pages.at(character >> 8U);
    if (!page)
        page = std::make_unique<Page>();
    Glyph& glyph = page->at(character & 0xffU);
    if (glyph.kind == GlyphKind::unknown)
        glyph = measure(character);
    return glyph;
}

QString GlyphMetrics::label_of(char32_t character)
{
    static constexpr std::array<const char*, 33> names{
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "TAB", "LF",
        "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
        "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US",  "SP"};
    if (character < names.size())
        return QString::fromLatin1(names.at(character));
    return QString::number(character, 16).toUpper().rightJustified(4, QChar('0'));
}

Glyph GlyphMetrics::measure(char32_t character) const
{
    if (character == U'\t')
        return {.kind = GlyphKind::tab};
    if (has_no_picture(character)) {
        const auto cells = static_cast<qreal>(label_of(character).size());
        return {.kind = GlyphKind::label, .advance = static_cast<float>(cells * cell_width)};
    }
    if (monospaced && character < 0x7f)
        return {.kind = GlyphKind::plain, .advance = static_cast<float>(cell_width)};
    const bool plain = is_of_plain_script(character) && !is_of_right_to_left(character);
    const GlyphKind kind = !plain || joins(character)              ? GlyphKind::shaped
                           : raw_font.supportsCharacter(character) ? GlyphKind::plain
                                                                   : GlyphKind::foreign;
    const bool has_width = !QChar::isMark(character) && character != 0x200d && character != 0x200c;
    const qreal advance =
        has_width ? metrics.horizontalAdvance(QString::fromUcs4(&character, 1)) : 0;
    return {.kind = kind, .advance = static_cast<float>(advance)};
}
