#pragma once

#include <QString>

/// What the updater shows and offers.
struct UpdateOffer
{
    QString currentVersion;
    QString newVersion;
    QString info;         ///< text of the info server, plain
    QString manualUrl;    ///< page to download by hand; may be empty
    QString automaticUrl; ///< address of the installer; may be empty
    bool beta = false;
    bool mandatory = false; ///< the running version isn't supported
};

/// Message boxes and the questions of the controller, implemented by the window and by tests.
/// warning and critical are callable from every thread: off the main thread they are queued, and
/// they never wait for the user. The others are for the main thread. Texts are plain text unless
/// said otherwise.
class UserDialogs
{
public:
    UserDialogs() = default;
    UserDialogs(const UserDialogs&) = delete;
    UserDialogs& operator=(const UserDialogs&) = delete;
    virtual ~UserDialogs() = default;

    virtual void warning(const QString& title, const QString& text) = 0;
    virtual void critical(const QString& title, const QString& text) = 0;
    /// The last word before the program closes: waits until it was read.
    virtual void farewell(const QString& title, const QString& text) = 0;
    /// Waits for the answer; true for Yes.
    virtual bool question(const QString& title, const QString& text) = 0;
    /// Waits for the user's choice. The path of the downloaded installer, empty if the user doesn't
    /// want it or took the page to download by hand.
    virtual QString offerUpdate(const UpdateOffer& offer) = 0;
};
