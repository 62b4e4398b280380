#include "app/gui/dialogs/SettingsPage.h"

#include "gui/WordSpinBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include <type_traits>
#include <utility>

namespace {

constexpr int kNumberWidth = 16; // characters; boxes of one group line up

} // namespace

QString spokenName(const QString& label)
{
    QString name = label;
    name.remove(QLatin1Char('&'));
    while (name.endsWith(QLatin1Char(':'))) {
        name.chop(1);
    }
    return name;
}

SettingsPage::SettingsPage(QWidget* parent) : QWidget(parent), m_column(new QVBoxLayout(this))
{
    auto* rest = new QWidget(this);
    rest->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    m_column->addWidget(rest, 1);
}

template <typename Option>
void SettingsPage::bind(const Option& option, std::function<QVariant()> shown,
                        std::function<void(const QVariant&)> show)
{
    using Value = std::decay_t<decltype((std::declval<const Settings&>().*option.get)())>;
    Binding binding;
    binding.from = [get = option.get](const Settings& from) {
        return QVariant((from.*get)());
    };
    binding.to = [set = option.set](Settings& to, const QVariant& value) {
        (to.*set)(value.value<Value>());
    };
    binding.shown = std::move(shown);
    binding.show = std::move(show);
    m_bindings.push_back(std::move(binding));
}

void SettingsPage::load(const Settings& settings)
{
    for (Binding& binding : m_bindings) {
        binding.show(binding.from(settings));
        binding.loaded = binding.shown();
    }
}

void SettingsPage::store(Settings& settings)
{
    for (Binding& binding : m_bindings) {
        const QVariant value = binding.shown();
        if (value != binding.loaded) {
            binding.to(settings, value);
            binding.loaded = value;
        }
    }
}

bool SettingsPage::isChanged() const
{
    for (const Binding& binding : m_bindings) {
        if (binding.shown() != binding.loaded) {
            return true;
        }
    }
    return false;
}

SettingsFault SettingsPage::fault() const
{
    for (const Rule& rule : m_rules) {
        const QString reason = rule.reason();
        if (!reason.isEmpty()) {
            return {rule.control, reason};
        }
    }
    return {};
}

QFormLayout* SettingsPage::addGroup(const QString& title)
{
    auto* group = new QGroupBox(title, this);
    auto* form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_column->insertWidget(m_column->count() - 1, group);
    return form;
}

QCheckBox* SettingsPage::addCheck(QFormLayout* form, const QString& text, const BoolOption& option)
{
    auto* box = new QCheckBox(text, form->parentWidget());
    box->setObjectName(QLatin1String(option.key));
    form->addRow(box);
    bind(
        option, [box] { return QVariant(box->isChecked()); },
        [box](const QVariant& value) { box->setChecked(value.toBool()); });
    connect(box, &QCheckBox::toggled, this, &SettingsPage::sigEdited);
    return box;
}

QSpinBox* SettingsPage::addNumber(QFormLayout* form, const QString& label, const NumberRange& range,
                                  const IntOption& option)
{
    QWidget* parent = form->parentWidget();
    QSpinBox* box = range.highestWord.isEmpty() ? new QSpinBox(parent)
                                                : new WordSpinBox(range.highestWord, parent);
    box->setObjectName(QLatin1String(option.key));
    box->setRange(range.lowest, range.highest);
    box->setSingleStep(range.step);
    box->setSuffix(range.suffix.isEmpty() ? QString() : QLatin1Char(' ') + range.suffix);
    box->setAccelerated(true);
    box->setMinimumWidth(kNumberWidth * fontMetrics().averageCharWidth());
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    ignoreWheelUnlessFocused(box);
    addLabelled(form, label, box);
    bind(
        option, [box] { return QVariant(box->value()); },
        [box](const QVariant& value) { box->setValue(value.toInt()); });
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &SettingsPage::sigEdited);
    return box;
}

QComboBox* SettingsPage::addChoice(QFormLayout* form, const QString& label, const Choices& choices,
                                   const IntOption& option)
{
    auto* box = new QComboBox(form->parentWidget());
    box->setObjectName(QLatin1String(option.key));
    for (const auto& choice : choices) {
        box->addItem(choice.first, choice.second);
    }
    ignoreWheelUnlessFocused(box);
    addLabelled(form, label, box);
    bind(
        option, [box] { return box->currentData(); },
        [box](const QVariant& value) { box->setCurrentIndex(box->findData(value.toInt())); });
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SettingsPage::sigEdited);
    return box;
}

QLineEdit* SettingsPage::addText(QFormLayout* form, const QString& label, const TextOption& option)
{
    auto* edit = new QLineEdit(form->parentWidget());
    edit->setObjectName(QLatin1String(option.key));
    addLabelled(form, label, edit);
    bindText(
        option, [edit] { return edit->text().trimmed(); },
        [edit](const QString& text) { edit->setText(text); });
    connect(edit, &QLineEdit::textChanged, this, &SettingsPage::sigEdited);
    return edit;
}

FolderEdit* SettingsPage::addFolder(QFormLayout* form, const QString& label, FolderEdit::Rule rule,
                                    const TextOption& option)
{
    auto* edit = new FolderEdit(rule, spokenName(label), form->parentWidget());
    edit->setObjectName(QLatin1String(option.key));
    addLabelled(form, label, edit);
    bindText(
        option, [edit] { return edit->folder(); },
        [edit](const QString& text) { edit->setFolder(text); });
    connect(edit, &FolderEdit::folderChanged, this, &SettingsPage::sigEdited);
    addRule(edit, [edit] {
        const QString fault = edit->fault();
        return fault.isEmpty() ? fault : tr("%1: %2").arg(edit->accessibleName(), fault);
    });
    return edit;
}

void SettingsPage::addHint(QFormLayout* form, const QString& text)
{
    auto* hint = new QLabel(text, form->parentWidget());
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    form->addRow(hint);
}

void SettingsPage::addLabelled(QFormLayout* form, const QString& label, QWidget* field)
{
    auto* words = new QLabel(label, form->parentWidget());
    words->setBuddy(field);
    field->setAccessibleName(spokenName(label));
    form->addRow(words, field);
}

void SettingsPage::bindText(const TextOption& option, std::function<QString()> shown,
                            std::function<void(const QString&)> show)
{
    bind(
        option, [shown = std::move(shown)] { return QVariant(shown()); },
        [show = std::move(show)](const QVariant& value) { show(value.toString()); });
}

void SettingsPage::addRule(QWidget* control, std::function<QString()> reason)
{
    m_rules.push_back({control, std::move(reason)});
}

/// Otherwise scrolling the page changes whatever comes under the pointer.
void SettingsPage::ignoreWheelUnlessFocused(QWidget* control)
{
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(this);
}

bool SettingsPage::eventFilter(QObject* watched, QEvent* event)
{
    const auto* control = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && control != nullptr && !control->hasFocus()) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
