#pragma once

#include "app/gui/dialogs/OptionTable.h"
#include "gui/FolderEdit.h"

#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <functional>
#include <vector>

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;

/// What is wrong on a page, and where.
struct SettingsFault
{
    QWidget* control = nullptr; ///< null: nothing
    QString reason;
};

/// A page of options: groups of labelled controls, each bound to one option of Settings. A control
/// carries the option's key as its object name. Only options that were changed on the page are
/// written, so a stored value that no control can show stays as it is. Main thread.
class SettingsPage : public QWidget
{
    Q_OBJECT
public:
    struct NumberRange
    {
        int lowest = 0;
        int highest = 0;
        int step = 1;
        QString suffix;
        QString highestWord; ///< shown for the highest value; empty: its number
    };
    using Choices = QVector<QPair<QString, int>>;

    explicit SettingsPage(QWidget* parent = nullptr);

    void load(const Settings& settings);
    void store(Settings& settings);
    bool isChanged() const;
    SettingsFault fault() const;

    /// A framed group with a heading, below those that exist.
    QFormLayout* addGroup(const QString& title);
    QCheckBox* addCheck(QFormLayout* form, const QString& text, const BoolOption& option);
    QSpinBox* addNumber(QFormLayout* form, const QString& label, const NumberRange& range,
                        const IntOption& option);
    QComboBox* addChoice(QFormLayout* form, const QString& label, const Choices& choices,
                         const IntOption& option);
    QLineEdit* addText(QFormLayout* form, const QString& label, const TextOption& option);
    FolderEdit* addFolder(QFormLayout* form, const QString& label, FolderEdit::Rule rule,
                          const TextOption& option);
    /// A plain explanation in the place of a row.
    void addHint(QFormLayout* form, const QString& text);
    /// Any widget with a label; gives it the label's name for screen readers.
    void addLabelled(QFormLayout* form, const QString& label, QWidget* field);

    /// Binds an option to a text that some other control shows. Its owner calls sigEdited.
    void bindText(const TextOption& option, std::function<QString()> shown,
                  std::function<void(const QString&)> show);
    /// `reason` gives an empty text as long as the control's value is good.
    void addRule(QWidget* control, std::function<QString()> reason);

Q_SIGNALS:
    /// A control was changed, by the user or by load.
    void sigEdited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Binding
    {
        std::function<QVariant(const Settings&)> from;
        std::function<void(Settings&, const QVariant&)> to;
        std::function<QVariant()> shown;
        std::function<void(const QVariant&)> show;
        QVariant loaded;
    };
    struct Rule
    {
        QWidget* control;
        std::function<QString()> reason;
    };

    template <typename Option>
    void bind(const Option& option, std::function<QVariant()> shown,
              std::function<void(const QVariant&)> show);
    void ignoreWheelUnlessFocused(QWidget* control);

    QVBoxLayout* m_column;
    std::vector<Binding> m_bindings;
    std::vector<Rule> m_rules;
};

/// The label without its mnemonic and colon, as screen readers say it.
QString spokenName(const QString& label);
