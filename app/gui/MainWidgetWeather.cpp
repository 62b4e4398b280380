#include "app/gui/MainWidgetWeather.h"

#include "app/gui/MetarRow.h"
#include "app/gui/UpperAirTable.h"
#include "app/gui/WidgetMetarUndock.h"
#include "gui/Icons.h"
#include "gui/TextFonts.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSet>
#include <QShortcut>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {

constexpr int kMostRows = 500;
constexpr int kIcaoLength = 4;
constexpr int kIcaoRole = Qt::UserRole;
constexpr int kLineWidthInCharacters = 14;
constexpr int kLongestIcao = 12;

const QColor kWhite(255, 255, 255);
const QColor kLightGrey(240, 240, 240);
const QColor kUnknownBackground(200, 30, 30);

QLabel* headingLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setFont(textfonts::bold(label->font()));
    return label;
}

/// Breaks its lines anew when its width changes, which a list of this kind doesn't.
class ReportList : public QListWidget
{
public:
    using QListWidget::QListWidget;

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QListWidget::resizeEvent(event);
        scheduleDelayedItemsLayout();
    }
};

/// Gives each row a little air above and below.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return size + QSize(0, option.fontMetrics.height() / 2);
    }
};

/// Tool tips guess whether they are rich text; this one is a report in any case.
QString reportToolTip(const QString& text)
{
    return QStringLiteral("<p style=\"white-space:pre\">") + text.toHtmlEscaped()
           + QStringLiteral("</p>");
}

} // namespace

MainWidgetWeather::MainWidgetWeather(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("DockWeather"));
    buildSearch();
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName(QStringLiteral("splitter_weather"));
    split->addWidget(buildReports());
    split->addWidget(buildUpperAir());
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_icaoLabel);
    searchRow->addWidget(m_icao);
    searchRow->addWidget(m_search);
    searchRow->addStretch(1);
    searchRow->addWidget(m_weatherTime);
    auto* column = new QVBoxLayout(this);
    column->addLayout(searchRow);
    column->addWidget(split, 1);
    OnEnableGetMetarButton(false);
    retranslateUi();
}

MainWidgetWeather::~MainWidgetWeather() = default;

void MainWidgetWeather::buildSearch()
{
    m_icaoLabel = new QLabel(this);
    m_icao = new QLineEdit(this);
    m_icao->setObjectName(QStringLiteral("lineEdit_GetMetar"));
    m_icao->setMaximumWidth(fontMetrics().averageCharWidth() * 2 * kLineWidthInCharacters);
    m_icao->setMaxLength(kLongestIcao);
    m_icaoLabel->setBuddy(m_icao);
    m_search = new QPushButton(Icons::appIcon(Icons::Name::Search), QString(), this);
    m_search->setObjectName(QStringLiteral("pushButton_searchMetar"));
    m_weatherTime = new QLabel(this);
    m_weatherTime->setObjectName(QStringLiteral("label_weatherTime"));
    m_weatherTime->setTextFormat(Qt::PlainText);
    connect(m_search, &QPushButton::clicked, this, &MainWidgetWeather::OnGetMetarClicked);
    connect(m_icao, &QLineEdit::returnPressed, this, &MainWidgetWeather::OnGetMetarClicked);
}

QWidget* MainWidgetWeather::buildReports()
{
    auto* box = new QWidget(this);
    m_reportsTitle = headingLabel(box);
    m_list = new ReportList(box);
    m_list->setObjectName(QStringLiteral("listWidget_metarRaw"));
    m_list->setFont(textfonts::fixed());
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_list->setWordWrap(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Lines are broken for the width beside a scroll bar, whether there is one or not.
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_reportsTitle->setBuddy(m_list);
    connect(m_list, &QWidget::customContextMenuRequested, this,
            &MainWidgetWeather::showContextMenu);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &MainWidgetWeather::openWindow);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(key, m_list, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, &MainWidgetWeather::openOnTop);
    }
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_reportsTitle);
    column->addWidget(m_list, 1);
    return box;
}

QWidget* MainWidgetWeather::buildUpperAir()
{
    auto* box = new QWidget(this);
    m_upperAirTitle = headingLabel(box);
    m_upperAir = new UpperAirTable(box);
    m_upperAirTitle->setBuddy(m_upperAir);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_upperAirTitle);
    column->addWidget(m_upperAir, 1);
    return box;
}

void MainWidgetWeather::displayMetar(const aviation::weather::Metar& metar)
{
    const MetarRow row = makeMetarRow(metar);
    if (row.text == m_lastText) {
        return;
    }
    m_lastText = row.text;
    auto* item = new QListWidgetItem(row.text);
    item->setToolTip(reportToolTip(row.decoded));
    item->setBackground(m_grey ? kLightGrey : kWhite);
    item->setForeground(Qt::black); // readable on both, whatever the palette says
    item->setData(kIcaoRole, row.icao);
    m_grey = !m_grey;
    m_list->insertItem(0, item);
    m_reports.insert(row.icao, metar);
    dropOldRows();
}

void MainWidgetWeather::dropOldRows()
{
    while (m_list->count() > kMostRows) {
        delete m_list->takeItem(m_list->count() - 1);
    }
    if (m_reports.size() > kMostRows) {
        limitMap();
    }
}

void MainWidgetWeather::limitMap()
{
    QSet<QString> shown;
    for (int row = 0; row < m_list->count(); ++row) {
        shown.insert(m_list->item(row)->data(kIcaoRole).toString());
    }
    for (auto it = m_reports.begin(); it != m_reports.end();) {
        it = shown.contains(it.key()) ? std::next(it) : m_reports.erase(it);
    }
}

void MainWidgetWeather::OnGetMetarClicked()
{
    const QString icao = m_icao->text().toUpper();
    m_icao->setText(icao);
    if (!icao.isEmpty()) {
        Q_EMIT OnMetarRequest(icao);
    }
}

void MainWidgetWeather::OnBackgroundIcao(const QString&, bool known)
{
    QPalette palette;
    if (!known) {
        palette.setColor(QPalette::Base, kUnknownBackground);
        palette.setColor(QPalette::Text, Qt::white);
    }
    m_icao->setPalette(palette);
}

void MainWidgetWeather::OnEnableGetMetarButton(bool enabled)
{
    m_search->setEnabled(enabled);
    m_icao->setEnabled(enabled);
}

void MainWidgetWeather::setCompleterList(const QStringList& icaos)
{
    auto* completer = new QCompleter(icaos, m_icao);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    delete m_icao->completer();
    m_icao->setCompleter(completer);
}

void MainWidgetWeather::setWeatherTime(const QString& text)
{
    m_weatherTime->setText(text);
}

void MainWidgetWeather::OnTableGribUpdate(const aviation::weather::Grib& grib)
{
    m_upperAir->setGrib(grib);
}

void MainWidgetWeather::clearContent()
{
    m_list->clear();
    m_reports.clear();
    m_lastText.clear();
}

void MainWidgetWeather::copyMetar()
{
    if (const QListWidgetItem* item = m_list->currentItem()) {
        QApplication::clipboard()->setText(item->text());
    }
}

void MainWidgetWeather::openOnTop()
{
    openWindow(m_list->currentItem());
}

void MainWidgetWeather::openWindow(const QListWidgetItem* item)
{
    if (item == nullptr) {
        return;
    }
    auto report = m_reports.constFind(item->text().left(kIcaoLength));
    if (report == m_reports.constEnd()) {
        report = m_reports.constFind(item->data(kIcaoRole).toString()); // land stations, ships
    }
    if (report == m_reports.constEnd()) {
        return;
    }
    QPointer<WidgetMetarUndock>& window = m_windows[report.key()];
    if (window.isNull()) {
        window = new WidgetMetarUndock(*report, this);
    } else {
        window->setMetar(*report);
    }
    window->show();
    window->raise();
}

void MainWidgetWeather::showContextMenu(const QPoint& position)
{
    using Icons::Name;
    QMenu menu(this);
    QAction* clearAction = menu.addAction(Icons::appIcon(Name::Clear), tr("Clear Content"), this,
                                          &MainWidgetWeather::clearContent);
    QAction* copyAction = menu.addAction(Icons::appIcon(Name::Copy), tr("Copy Metar"), this,
                                         &MainWidgetWeather::copyMetar);
    QAction* windowAction =
        menu.addAction(Icons::appIcon(Name::NewWindowOnTop), tr("New metar window on top"), this,
                       &MainWidgetWeather::openOnTop);
    clearAction->setEnabled(m_list->count() > 0);
    copyAction->setEnabled(m_list->currentItem() != nullptr);
    windowAction->setEnabled(m_list->currentItem() != nullptr);
    menu.exec(m_list->viewport()->mapToGlobal(position));
}

void MainWidgetWeather::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void MainWidgetWeather::retranslateUi()
{
    m_icaoLabel->setText(tr("ICA&O"));
    m_icao->setAccessibleName(tr("ICAO code"));
    m_icao->setPlaceholderText(tr("e.g. EDDF"));
    m_icao->setToolTip(tr("Airport whose weather is shown; Return searches"));
    m_search->setText(tr("Get Metar"));
    m_search->setToolTip(tr("Usable as soon as weather is loaded"));
    m_weatherTime->setAccessibleName(tr("Time of the weather"));
    m_reportsTitle->setText(tr("Reports"));
    m_list->setAccessibleName(tr("Reports"));
    m_upperAirTitle->setText(tr("Upper air"));
}
