#include "explorer/RefreshMark.h"

#include "db/Session.h"
#include "platform/gui/Icons.h"

#include <QPushButton>
#include <QSocketNotifier>

#include <algorithm>

RefreshMark::RefreshMark(QPushButton &button) : m_button(button), m_usualHelp(button.toolTip()) { }

RefreshMark::~RefreshMark() = default;

void RefreshMark::begin(const QStringList &tables)
{
    m_tables = tables;
    Database &database = Session::database();
    const qintptr socket = database.changesSocket();
    // After a lost connection the new one may have the same number.
    m_notifier.reset();
    if (socket >= 0) {
        m_notifier = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_button, [this] { look(); });
    }
    database.changesOfOthers();
    show(false);
}

void RefreshMark::look()
{
    Database &database = Session::database();
    if (database.isBusy())
        return; // it is told again
    const QStringList changed = database.changesOfOthers();
    if (std::ranges::any_of(changed, [&](const QString &table) { return m_tables.contains(table); }))
        show(true);
    // A connection that is gone would be told of again and again; the next statement makes another.
    if (database.changesSocket() != m_notifier->socket())
        m_notifier->setEnabled(false);
}

void RefreshMark::show(bool due)
{
    m_button.setIcon(Icons::icon(due ? QStringLiteral("refresh-due") : QStringLiteral("refresh")));
    m_button.setToolTip(due ? QStringLiteral("Somebody else has changed what is shown here: reads it anew")
                            : m_usualHelp);
}
