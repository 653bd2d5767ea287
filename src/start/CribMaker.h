#pragma once

#include <QStringList>

#include <functional>

class QWidget;

/// Makes crib folders by vorlane-admin. Each function gives a fault, one sentence for the user, or nothing when the
/// crib is there. After a fault nothing is left behind that was not there before.
class CribMaker
{
public:
    /// `admin` is the path of vorlane-admin. While it works, a box over `owner` lets the user stop it.
    CribMaker(const QString &admin, QWidget *owner) : m_admin(admin), m_owner(owner) { }

    QString makeEmpty(const QString &folder) const;
    QString makeSample(const QString &folder) const;
    struct OldFile {
        QString name;
        QString password = {};
        bool mend = false; ///< adds folders for tools whose type or location does not exist
    };
    /// The report of it is reportName in the new folder.
    QString moveIn(const QString &folder, const OldFile &old) const;
    static constexpr auto reportName = "moved-in.txt";
    static bool hasPassword(const QString &oldFile);
    /// Whether OldFile::mend would help against that fault of moveIn().
    static bool isMendable(const QString &fault);
    /// Copies the connection file and what lies beside it and is named in it: certificates.
    QString connectTo(const QString &folder, const QString &connectionFile) const;

private:
    QString make(const QString &folder, const std::function<QString(const QString &database)> &fill) const;
    QString runAdmin(const QStringList &arguments, const QString &database, int lastGoodStatus = 0) const;

    QString m_admin;
    QWidget *m_owner;
};
