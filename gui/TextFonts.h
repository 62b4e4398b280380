#pragma once

#include <QFont>

/// The fonts of the window beside the application's own.
namespace textfonts {

/// Letters of equal width, for reports.
QFont fixed();
/// `font` in bold, for headings.
QFont bold(QFont font);

} // namespace textfonts
