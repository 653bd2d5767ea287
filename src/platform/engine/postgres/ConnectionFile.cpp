#include "platform/engine/postgres/ConnectionFile.h"

#include "platform/engine/EngineError.h"
#include "platform/system/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

using ConnectionFile::Settings;

constexpr qint64 maximumSize = 64 * 1024;
constexpr qint64 maximumFirstLine = 64;

constexpr char byteOrderMark[] = "\xef\xbb\xbf"; // some editors write one

constexpr const char *keywords[] = {"host",    "hostaddr", "port",       "dbname",     "user",
                                    "service", "schema",   "sslmode",    "passfile",   "sslrootcert",
                                    "sslcert", "sslkey",   "gssencmode", "krbsrvname", "channel_binding"};
constexpr const char *files[] = {"sslrootcert", "sslcert", "sslkey", "passfile"};
constexpr const char *passwords[] = {"password", "sslpassword"};

template<size_t count>
bool isOneOf(const char *const (&list)[count], const QByteArray &keyword)
{
    return std::ranges::any_of(list, [&](const char *known) { return keyword == known; });
}

QByteArray valueOf(const Settings &settings, const char *keyword)
{
    const auto found =
        std::ranges::find(settings.parameters, QByteArray(keyword), &decltype(settings.parameters)::value_type::first);
    return found == settings.parameters.end() ? QByteArray() : found->second;
}

/// What is wrong with a line, empty for nothing.
QString fault(const Settings &settings, const QByteArray &keyword, const QByteArray &value)
{
    const QString name = QString::fromUtf8(keyword);
    if (isOneOf(passwords, keyword))
        return QStringLiteral("all can read this file; a password belongs into the user's own password file");
    if (!isOneOf(keywords, keyword))
        return QStringLiteral("'%1' is not a setting of a connection").arg(name);
    if (value.isEmpty() || std::ranges::any_of(value, [](char c) { return c >= 0 && c < ' '; }))
        return QStringLiteral("'%1' has no value").arg(name);
    if (!valueOf(settings, keyword).isEmpty() || (keyword == "schema" && !settings.schema.isEmpty()))
        return QStringLiteral("'%1' is there twice").arg(name);
    return {};
}

bool isThisMachine(const QByteArray &hosts)
{
    return !hosts.isEmpty() && std::ranges::all_of(hosts.split(','), [](const QByteArray &host) {
        static const QRegularExpression ownAddress(QStringLiteral("^127(\\.[0-9]{1,3}){3}$"));
        return host == "localhost" || host == "::1" || ownAddress.match(QString::fromLatin1(host)).hasMatch();
    });
}

/// Also asked of a socket's connection, which takes no notice, so that neither a service nor the
/// user's environment can lead to another machine unseen.
void requireCertificate(Settings &settings)
{
    const QByteArray address = valueOf(settings, "hostaddr");
    if (valueOf(settings, "sslmode").isEmpty()
        && !isThisMachine(address.isEmpty() ? valueOf(settings, "host") : address))
        settings.parameters.push_back({"sslmode", "verify-full"});
}

}

std::optional<Settings> ConnectionFile::read(const QString &path)
{
    QFile file(ProgramFolder::toNative(path));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray first = file.readLine(maximumFirstLine).trimmed();
    if (first.startsWith(byteOrderMark))
        first.remove(0, qstrlen(byteOrderMark));
    if (first != "[postgresql]")
        return {};
    const auto refuse = [&](int line, const QString &reason) {
        throw EngineError(EngineError::notADatabase,
                          EngineError::of(EngineError::notADatabase, path).text()
                              + QStringLiteral(" (line %1: %2)").arg(line).arg(reason));
    };
    const QDir folder = QFileInfo(file).absoluteDir();
    Settings settings;
    const QByteArrayList lines = file.read(maximumSize).split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        const int number = int(i) + 2;
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const qsizetype sign = line.indexOf('=');
        const QByteArray keyword = line.first(std::max<qsizetype>(0, sign)).trimmed();
        QByteArray value = line.sliced(sign + 1).trimmed();
        if (sign < 0)
            refuse(number, QStringLiteral("not of the form keyword=value"));
        if (const QString reason = fault(settings, keyword, value); !reason.isEmpty())
            refuse(number, reason);
        // "system" stands for the authorities that the machine trusts anyway.
        if (isOneOf(files, keyword) && value != "system")
            value = QFile::encodeName(folder.absoluteFilePath(QString::fromUtf8(value)));
        if (keyword == "schema")
            settings.schema = value;
        else
            settings.parameters.push_back({keyword, value});
    }
    if (!file.atEnd())
        refuse(int(lines.size()) + 1, QStringLiteral("too long"));
    requireCertificate(settings);
    return settings;
}
