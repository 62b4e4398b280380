#pragma once

#include <QObject>
#include <QString>

class QLocalServer;

/// Sees to it that one window works with a settings folder: of two, each would overwrite what the
/// other saves, and both would set weather. A second start asks the first one to come up and ends.
/// Folders of their own go side by side. Main thread.
class SingleStart : public QObject
{
    Q_OBJECT
public:
    enum class Found
    {
        Nobody,  ///< this is the first, or it can't be found out
        Raised,  ///< the first one has come up
        NoAnswer ///< there is one that hangs
    };

    /// `key` names the settings folder and the user, keyOf().
    explicit SingleStart(QString key, QObject* parent = nullptr);
    ~SingleStart() override;

    /// Asks whoever has the key, for some seconds. With nobody there this one takes it and hears
    /// from now on; what a crash has left there is no obstacle.
    Found begin();

    static QString keyOf(const QString& settingsFolder);

Q_SIGNALS:
    /// Another start has asked for the window.
    void sigRaise();

private:
    Found askFirst() const;
    void listen();
    void answer();

    QString m_key;
    QLocalServer* m_server;
};
