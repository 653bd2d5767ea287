#pragma once

#include <QStringList>

#include <memory>

class QPushButton;
class QSocketNotifier;

/// Marks the Refresh button once somebody at another desk has changed what the explorer shows. Nothing is read anew by
/// itself: a list must not move under the hand. With a file nobody tells, and the button stays as it is.
class RefreshMark
{
public:
    explicit RefreshMark(QPushButton &button);
    ~RefreshMark();
    Q_DISABLE_COPY_MOVE(RefreshMark)

    /// What is shown is read anew, from these tables.
    void begin(const QStringList &tables);

private:
    void look();
    void show(bool due);

    QPushButton &m_button;
    QString m_usualHelp;
    QStringList m_tables;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
