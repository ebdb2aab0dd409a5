#include "render/look/text_style.h"

#include "render/look/rounded_font.h"

#include <QFontInfo>
#include <QGuiApplication>

namespace amperly {

namespace {

int points(TextStyle style)
{
    switch (style) {
    case TextStyle::Body:
        return 13;
    case TextStyle::Callout:
        return 12;
    case TextStyle::Caption:
        return 11;
    case TextStyle::Caption2:
        break;
    }
    return 10;
}

} // namespace

QFont textFont(TextStyle style, QFont::Weight weight)
{
    return sizedFont(points(style), weight);
}

QFont sizedFont(int points, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    // The toolkit's pixels are the screen's points: scaling comes on top.
    font.setPixelSize(points);
    font.setWeight(weight);
    return font;
}

QFont figureFont(int points, QFont::Weight weight)
{
    return inFamily(sizedFont(points, weight), toText(roundedFontFamily()));
}

QFont inFamily(const QFont& font, const QString& family)
{
    if (family.isEmpty())
        return font;
    QFont wanted = font;
    wanted.setFamilies({family});
    // A system may know a family and yet hand out another font for its name.
    if (QFontInfo(wanted).family() != family)
        return font;
    wanted.setFamilies(QStringList{family} + font.families());
    return wanted;
}

QFont figureFont(TextStyle style, QFont::Weight weight)
{
    return figureFont(points(style), weight);
}

QString toText(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

int textDirection(const QString& text)
{
    return text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
}

} // namespace amperly
