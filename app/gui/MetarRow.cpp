#include "app/gui/MetarRow.h"

#include <QLatin1String>

namespace {

using aviation::weather::Metar;

constexpr std::int32_t kNoVisibility = -1;

QString rowText(const Metar& metar)
{
    if (!metar.isKnown()) {
        return QStringLiteral("No metar found");
    }
    QString text = QString::fromStdWString(metar.reportText());
    if (metar.tafText().empty()) {
        return text;
    }
    QString taf = QString::fromStdWString(metar.tafText());
    for (const char* mark : {"\n", "\t", "\r"}) {
        taf.replace(QLatin1String(mark), QLatin1String(" "));
    }
    taf.replace(QLatin1String("  "), QLatin1String(" "));
    return text + QStringLiteral(" \nTAF ") + taf;
}

QString decodedText(const Metar& metar)
{
    QString text = QString::fromStdWString(metar.GetDecodedText());
    if (metar.visFromSynop() != kNoVisibility) {
        text += QStringLiteral("\nVis from Synop: %1m").arg(metar.visFromSynop());
    }
    return text;
}

} // namespace

MetarRow makeMetarRow(const Metar& metar)
{
    MetarRow row;
    row.text = rowText(metar);
    // A report made from one of a land station has its place in the other field.
    const bool land = row.text.startsWith(QLatin1String("LAND"));
    row.icao = QString::fromStdWString(land ? metar.name() : metar.icao());
    row.decoded = decodedText(metar);
    return row;
}
