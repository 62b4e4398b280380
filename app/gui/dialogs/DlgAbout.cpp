#include "app/gui/dialogs/DlgAbout.h"

#include "app/base/Settings.h"
#include "gui/DialogSize.h"
#include "gui/Icons.h"
#include "gui/PlainButtons.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <zlib.h>

namespace {

constexpr int kWidth = 620;
constexpr int kHeight = 460;
constexpr int kIconEdge = 64;

QString tableRow(const QString& what, const QString& origin, const QString& licence)
{
    return QStringLiteral("<tr><td>%1&nbsp;&nbsp;</td><td>%2&nbsp;&nbsp;</td><td>%3</td></tr>")
        .arg(what.toHtmlEscaped(), origin.toHtmlEscaped(), licence.toHtmlEscaped());
}

QString dataTable()
{
    const QString publicDomain = DlgAbout::tr("public domain");
    return tableRow(DlgAbout::tr("Airports"), QStringLiteral("OurAirports"), publicDomain)
           + tableRow(DlgAbout::tr("Stations"), QStringLiteral("NOAA/NCEI, NWS"), publicDomain)
           + tableRow(DlgAbout::tr("Stations"), QStringLiteral("NCAR/Unidata"),
                      QStringLiteral("BSD"))
           + tableRow(DlgAbout::tr("Reports of the demonstration"),
                      DlgAbout::tr("NOAA, WMO exchange"), publicDomain)
           + tableRow(DlgAbout::tr("Upper air of the demonstration"), QStringLiteral("NOAA, GFS"),
                      publicDomain)
           + tableRow(DlgAbout::tr("Icons and drawings"), QStringLiteral("Cirrilon"), QString());
}

QString libraryTable()
{
    return tableRow(QStringLiteral("Qt"), QLatin1String(qVersion()), QStringLiteral("LGPL 3"))
           + tableRow(QStringLiteral("zlib"), QLatin1String(zlibVersion()),
                      DlgAbout::tr("zlib licence"));
}

QString aboutText()
{
    const QString section = QStringLiteral("<h3>%1</h3><table>%2</table>");
    return QStringLiteral("<p>%1</p>")
               .arg(DlgAbout::tr("Real weather for flight simulators: Cirrilon fetches the reports "
                                 "of the world, composes the weather around your aircraft and "
                                 "brings it into the simulator. Not for real-world navigation.")
                        .toHtmlEscaped())
           + section.arg(DlgAbout::tr("Data").toHtmlEscaped(), dataTable())
           + QStringLiteral("<br>") // a heading has no room of its own below a table
           + section.arg(DlgAbout::tr("Libraries").toHtmlEscaped(), libraryTable());
}

} // namespace

DlgAbout::DlgAbout(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("About Cirrilon"));
    auto* icon = new QLabel(this);
    icon->setPixmap(Icons::appPixmap(Icons::Name::Application, QSize(kIconEdge, kIconEdge),
                                     devicePixelRatioF()));
    auto* title = new QLabel(QStringLiteral("Cirrilon"), this);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    title->setFont(large);
    auto* version = new QLabel(tr("Version %1").arg(Settings::version()), this);
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* text = new QTextBrowser(this);
    text->setAccessibleName(tr("About Cirrilon"));
    text->setOpenLinks(false);
    text->setHtml(aboutText());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* names = new QVBoxLayout;
    names->addWidget(title);
    names->addWidget(version);
    auto* head = new QHBoxLayout;
    head->addWidget(icon);
    head->addLayout(names, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(text, 1);
    column->addWidget(buttons);
    usePlainButtons(*this);
    resizeToScreen(*this, QSize(kWidth, kHeight));
}
