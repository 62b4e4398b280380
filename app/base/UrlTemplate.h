#pragma once

#include <QString>

/// Fills the date tokens of an external address with the current UTC time: "%d" day, "%m" month,
/// "%Y" year of four digits, "%y" year of two, "%h" hour, "%i" minute, "%s" second, all but "%Y"
/// with two digits. Every token is replaced wherever it stands, save at the very start of the
/// template, where it stays as it is. Callable from any thread.
QString expandUrlTemplate(const QString& urlTemplate);
