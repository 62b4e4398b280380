#pragma once

#include "app/base/UserDialogs.h"
#include "aviation/support/ScopedLock.h"

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QVector>

/// Keeps the boxes as "title|text"; questions are answered with no.
class FakeUserDialogs final : public UserDialogs
{
public:
    void warning(const QString& title, const QString& text) override
    {
        const aviation::ScopedLock lock(m_mutex);
        m_warnings << title + QLatin1Char('|') + text;
    }
    void critical(const QString& title, const QString& text) override
    {
        const aviation::ScopedLock lock(m_mutex);
        m_criticals << title + QLatin1Char('|') + text;
    }
    void farewell(const QString& title, const QString& text) override { critical(title, text); }
    bool question(const QString&, const QString&) override { return false; }
    QString offerUpdate(const UpdateOffer& offer) override
    {
        offers.push_back(offer);
        return installer;
    }

    QStringList warnings() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_warnings;
    }
    QStringList criticals() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_criticals;
    }

    QString installer; ///< what offerUpdate gives
    QVector<UpdateOffer> offers;

private:
    mutable QMutex m_mutex;
    QStringList m_warnings;  ///< guarded by m_mutex
    QStringList m_criticals; ///< guarded by m_mutex
};
