#pragma once

#include "platform/engine/driver/Counters.h"
#include "platform/engine/driver/Value.h"
#include "platform/engine/postgres/ConnectionFile.h"
#include "platform/engine/postgres/ServerError.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <span>

struct pg_conn;

/// The way to a server. What is to be said goes together in one journey, since far away each costs more than what the
/// server does.
class ServerConnection
{
public:
    /// `path` is the connection file's name, for the words of errors.
    /// @throws EngineError for a server that cannot be reached, refuses the user or is too old.
    ServerConnection(const QString &path, const ConnectionFile::Settings &settings, Counters &counters);
    ~ServerConnection();
    Q_DISABLE_COPY_MOVE(ServerConnection)

    /// A value that is not null in the server's own text form, exact.
    static QByteArray textOf(const Value &value);

    /// Connects anew; the server has forgotten everything then. @throws EngineError likewise.
    void connect();
    /// Goes up with each connect().
    int generation() const { return m_generation; }
    /// Whether the way is known to be broken.
    bool isLost() const;
    /// Also looks for a farewell that came while nobody asked.
    bool noticesLoss();

    /// Something to be said to the server.
    struct Message {
        enum Kind { Text, Prepare, Run };
        Kind kind = Text;
        QByteArray sql; ///< of a text, or of a statement to prepare
        QByteArray name; ///< of the statement to prepare or run
        const std::vector<Value> *values = nullptr;
    };
    struct Answer {
        std::optional<ServerError> error; ///< the first one; what came behind it was not done
        size_t done = 0; ///< how many of the messages were
        qint64 changed = 0; ///< rows, by the last of them that changed any
        QByteArray did; ///< the server's word for what the last message did, as "COMMIT"
    };
    using VisitResult = std::function<void(const pg_result *)>;
    /// `visit` is given what a Run brings back, row by row if so wished, and may end it by what it throws. After a lost
    /// connection the answer may be incomplete.
    Answer travel(std::span<const Message> messages, const VisitResult &visit = {}, bool rowByRow = false);
    /// Says something whose answer nobody waits for.
    void sendAlong(const QByteArray &sql);
    /// How long a statement waits for what others hold, on this connection and on those that take its place.
    void setPatience(int milliseconds);
    /// Runs any number of statements without values, apart from all journeys; a COPY ... FROM STDIN is handed
    /// `copied`. @returns what went wrong, if anything.
    std::optional<ServerError> execute(const QByteArray &sql, const QByteArray &copied = {});
    /// The names of a prepared statement's columns.
    QStringList columnNames(const QByteArray &name);

    /// Called while an answer is waited for, and between rows; what it throws ends the journey.
    void setPulse(std::function<void()> pulse) { m_pulse = std::move(pulse); }

    /// The connection of a server that says nothing for so long, in ms, is given up, though others may be answered.
    static inline int longestSilence = 300'000;

    int socket() const;
    /// The tables of which others said since the last call that they changed them.
    QStringList changesOfOthers();

private:
    void send(const Message &message);
    void receive(std::span<const Message> messages, const VisitResult &visit, bool rowByRow, Answer &answer);
    /// Nothing at the end of a message's results, nor from a server that was waited for in vain.
    pg_result *next(const std::function<void()> &pulse = {});
    bool livesStill() const;
    void cancel();
    /// Takes no notice of what is still to come of a journey, but for `error`, if given.
    void skip(std::optional<ServerError> *error = nullptr);
    void skipUnread();
    void noteChanges();

    QString m_path;
    ConnectionFile::Settings m_settings;
    Counters &m_counters;
    std::function<void()> m_pulse;
    pg_conn *m_connection = nullptr;
    bool m_gaveUp = false; ///< waiting for an answer
    int m_generation = 0;
    int m_patience = 2000; ///< milliseconds, as on a file
    int m_unread = 0; ///< journeys whose answers nobody waited for
    QStringList m_changes;
};
