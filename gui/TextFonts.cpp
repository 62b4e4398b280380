#include "gui/TextFonts.h"

#include <QFontDatabase>
#include <QFontInfo>

namespace textfonts {

QFont fixed()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        font.setFamily(QStringLiteral("monospace"));
        font.setStyleHint(QFont::TypeWriter);
    }
    return font;
}

QFont bold(QFont font)
{
    font.setBold(true);
    return font;
}

} // namespace textfonts
