#include "platform/engine/postgres/ServerConnection.h"

#include "platform/engine/postgres/Libpq.h"

#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace {

#ifdef Q_OS_WIN
int poll(pollfd *sockets, unsigned count, int milliseconds) { return WSAPoll(sockets, count, milliseconds); }
#endif

constexpr int oldestServer = 13;

// No statement is compiled, which costs more than it saves here, and texts have one form on every server.
constexpr char options[] =
    "-c jit=off -c DateStyle=ISO,YMD -c IntervalStyle=postgres -c standard_conforming_strings=on "
    "-c idle_in_transaction_session_timeout=60000 "
    "-c client_min_messages=warning";

// A cable that was pulled is noticed after seconds, not hours.
constexpr std::pair<const char *, const char *> habits[] = {
    {"connect_timeout", "5"},      {"keepalives_idle", "20"},   {"keepalives_interval", "5"},
    {"tcp_user_timeout", "15000"}, {"client_encoding", "UTF8"}, {"application_name", "Vorlane Manager"},
};

// A server that says nothing for so long is asked at its door whether it lives at all.
constexpr int silence = 10'000; // ms
constexpr std::chrono::seconds cancelTimeout(5);

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

/// A name, whatever it holds, as an option of the connection takes it.
QByteArray asOption(QByteArray name)
{
    name = '"' + name.replace('"', "\"\"") + '"';
    return name.replace('\\', "\\\\").replace(' ', "\\ ");
}

/// What a connection is asked for with, as libpq takes it.
class Parameters
{
public:
    /// `patience` is how long a statement waits for what others hold, in milliseconds.
    Parameters(const ConnectionFile::Settings &settings, int patience) : m_options(options)
    {
        m_options += " -c lock_timeout=" + QByteArray::number(patience);
        if (!settings.schema.isEmpty())
            m_options += " -c search_path=" + asOption(settings.schema);
        add("options", m_options.constData());
        for (const auto &[keyword, value] : habits)
            add(keyword, value);
        for (const auto &[keyword, value] : settings.parameters)
            add(keyword.constData(), value.constData());
        add(nullptr, nullptr);
    }
    Q_DISABLE_COPY_MOVE(Parameters)

    const char *const *keywords() const { return m_keywords.data(); }
    const char *const *values() const { return m_values.data(); }

private:
    void add(const char *keyword, const char *value)
    {
        m_keywords.push_back(keyword);
        m_values.push_back(value);
    }

    QByteArray m_options;
    std::vector<const char *> m_keywords, m_values;
};

std::optional<ServerError> errorOf(const PGresult *result)
{
    const ExecStatusType status = libpq().resultStatus(result);
    if (status != PGRES_FATAL_ERROR && status != PGRES_BAD_RESPONSE)
        return {};
    return ServerError::of(result);
}

}

QByteArray ServerConnection::textOf(const Value &value)
{
    if (value.isInteger())
        return QByteArray::number(value.toInteger());
    return value.isText() ? value.toText().toUtf8()
                          : QByteArray::number(value.toNumber(), 'g', QLocale::FloatingPointShortest);
}

ServerConnection::ServerConnection(const QString &path, const ConnectionFile::Settings &settings, Counters &counters)
    : m_path(path), m_settings(settings), m_counters(counters)
{
    try {
        connect();
    } catch (...) {
        libpq().finish(m_connection);
        throw;
    }
}

ServerConnection::~ServerConnection() { libpq().finish(m_connection); }

void ServerConnection::connect()
{
    libpq().finish(m_connection);
    const Parameters parameters(m_settings, m_patience);
    m_connection = libpq().connectStartParams(parameters.keywords(), parameters.values(), 0);
    // A server that refuses tells its code, which says why in any language, only where that was asked for before.
    libpq().setErrorVerbosity(m_connection, PQERRORS_VERBOSE);
    if (libpq().status(m_connection) != CONNECTION_BAD)
        libpq().reset(m_connection);
    m_unread = 0;
    m_gaveUp = false;
    ++m_generation;
    ++m_counters.journeys;
    if (libpq().status(m_connection) != CONNECTION_OK)
        throw connectionRefused(m_path, m_connection);
    if (libpq().serverVersion(m_connection) < oldestServer * 10'000)
        throw connectionRefused(m_path,
                                QStringLiteral("the server is too old, version %1 is needed").arg(oldestServer));
    // What the server remarks is for no window and for no command's output.
    libpq().setNoticeProcessor(
        m_connection, [](void *, const char *) {}, nullptr);
    libpq().enterPipelineMode(m_connection);
    libpq().setnonblocking(m_connection, 1);
}

void ServerConnection::setPatience(int milliseconds)
{
    m_patience = milliseconds;
    // A connection that is lost gets it with the next one.
    if (!isLost())
        execute("SET lock_timeout = " + QByteArray::number(milliseconds));
}

bool ServerConnection::isLost() const { return m_gaveUp || libpq().status(m_connection) != CONNECTION_OK; }

bool ServerConnection::noticesLoss()
{
    skipUnread();
    return isLost() || !libpq().consumeInput(m_connection) || isLost();
}

void ServerConnection::send(const Message &message)
{
    std::vector<QByteArray> texts;
    std::vector<const char *> pointers;
    switch (message.kind) {
    case Message::Text:
        libpq().sendQueryParams(m_connection, message.sql.constData(), 0, nullptr, nullptr, nullptr, nullptr, 0);
        break;
    case Message::Prepare:
        libpq().sendPrepare(m_connection, message.name.constData(), message.sql.constData(), 0, nullptr);
        break;
    case Message::Run:
        for (const Value &value : *message.values)
            texts.push_back(value.isNull() ? QByteArray() : textOf(value));
        for (size_t i = 0; i < texts.size(); ++i)
            pointers.push_back((*message.values)[i].isNull() ? nullptr : texts[i].constData());
        libpq().sendQueryPrepared(m_connection, message.name.constData(), int(pointers.size()), pointers.data(),
                                  nullptr, nullptr, 0);
        break;
    }
}

ServerConnection::Answer ServerConnection::travel(std::span<const Message> messages, const VisitResult &visit,
                                                  bool rowByRow)
{
    skipUnread();
    for (const Message &message : messages)
        send(message);
    libpq().pipelineSync(m_connection);
    ++m_counters.journeys;
    Answer answer;
    try {
        receive(messages, visit, rowByRow, answer);
    } catch (...) {
        cancel();
        skip();
        throw;
    }
    noteChanges();
    return answer;
}

void ServerConnection::sendAlong(const QByteArray &sql)
{
    send({Message::Text, sql, {}, nullptr});
    libpq().pipelineSync(m_connection);
    ++m_unread;
}

// Each message's results end with a null one; behind the last comes the end of the journey.
void ServerConnection::receive(std::span<const Message> messages, const VisitResult &visit, bool rowByRow,
                               Answer &answer)
{
    for (const Message &message : messages) {
        const bool visited = message.kind == Message::Run && visit;
        if (visited && rowByRow)
            libpq().setSingleRowMode(m_connection);
        bool failed = false;
        while (const Result result{next(m_pulse), libpq().clear}) {
            const ExecStatusType status = libpq().resultStatus(result.get());
            if (std::optional<ServerError> error = errorOf(result.get()); error && !answer.error)
                answer.error = std::move(error);
            failed = failed || status == PGRES_FATAL_ERROR || status == PGRES_PIPELINE_ABORTED;
            if (visited && (status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE))
                visit(result.get());
            if (message.kind == Message::Run)
                answer.changed = QByteArray(libpq().cmdTuples(result.get())).toLongLong();
            answer.did = libpq().cmdStatus(result.get());
            if (isLost())
                return;
        }
        if (isLost())
            return;
        answer.done += !failed;
    }
    // Outside of a transaction the server stores a change only at the journey's end, and may refuse it there.
    skip(&answer.error);
}

PGresult *ServerConnection::next(const std::function<void()> &pulse)
{
    constexpr int betweenPulses = 2; // ms
    QElapsedTimer silent;
    silent.start();
    for (qint64 limit = silence; !isLost();) {
        const short events = libpq().flush(m_connection) > 0 ? POLLIN | POLLOUT : POLLIN;
        if (pulse)
            pulse();
        if (!libpq().isBusy(m_connection))
            return libpq().getResult(m_connection);
        pollfd socket{decltype(pollfd::fd)(libpq().socket(m_connection)), events, 0};
        const int wait = pulse ? betweenPulses : int(std::min(silence, longestSilence));
        if (poll(&socket, 1, wait) > 0) {
            libpq().consumeInput(m_connection);
            silent.start();
            limit = silence;
        } else if (silent.elapsed() >= longestSilence) {
            m_gaveUp = true;
        } else if (silent.elapsed() >= limit) {
            m_gaveUp = !livesStill();
            limit += silence;
        }
    }
    return nullptr;
}

// A server that is frozen leaves its connections as they are, so that only a new one tells it from a busy one.
bool ServerConnection::livesStill() const
{
    const Parameters parameters(m_settings, m_patience);
    return libpq().pingParams(parameters.keywords(), parameters.values(), 0) != PQPING_NO_RESPONSE;
}

void ServerConnection::cancel()
{
    const std::shared_ptr<PGcancel> handle(libpq().getCancel(m_connection), libpq().freeCancel);
    std::packaged_task<void()> request([handle] {
        char why[256];
        libpq().cancel(handle.get(), why, sizeof why);
    });
    const std::future<void> done = request.get_future();
    std::thread(std::move(request)).detach(); // nothing else ends the waiting for a server that is frozen
    m_gaveUp = m_gaveUp || done.wait_for(cancelTimeout) != std::future_status::ready;
}

void ServerConnection::skip(std::optional<ServerError> *error)
{
    // A null result ends those of one message; a second one says that nothing more comes.
    for (int nulls = 0; !isLost() && nulls < 2;) {
        const Result result{next(), libpq().clear};
        if (result && libpq().resultStatus(result.get()) == PGRES_PIPELINE_SYNC)
            return;
        if (result && error && !*error)
            *error = errorOf(result.get());
        nulls = result ? 0 : nulls + 1;
    }
}

void ServerConnection::skipUnread()
{
    for (; m_unread > 0; --m_unread)
        skip();
}

std::optional<ServerError> ServerConnection::execute(const QByteArray &sql, const QByteArray &copied)
{
    skipUnread();
    ++m_counters.journeys;
    libpq().exitPipelineMode(m_connection);
    libpq().sendQuery(m_connection, sql.constData());
    std::optional<ServerError> error;
    while (const Result result{next(), libpq().clear}) {
        if (libpq().resultStatus(result.get()) == PGRES_COPY_IN) {
            libpq().putCopyData(m_connection, copied.constData(), int(copied.size()));
            libpq().putCopyEnd(m_connection, nullptr);
        }
        if (!error)
            error = errorOf(result.get());
    }
    libpq().enterPipelineMode(m_connection);
    return error;
}

QStringList ServerConnection::columnNames(const QByteArray &name)
{
    skipUnread();
    libpq().sendDescribePrepared(m_connection, name.constData());
    libpq().pipelineSync(m_connection);
    ++m_counters.journeys;
    QStringList names;
    while (const Result result{next(), libpq().clear})
        for (int column = 0; column < libpq().nfields(result.get()); ++column)
            names.append(QString::fromUtf8(libpq().fname(result.get(), column)));
    skip();
    return names;
}

int ServerConnection::socket() const { return libpq().socket(m_connection); }

void ServerConnection::noteChanges()
{
    while (PGnotify *notice = libpq().notifies(m_connection)) {
        const QString table = QString::fromUtf8(notice->extra);
        if (notice->be_pid != libpq().backendPID(m_connection) && !m_changes.contains(table))
            m_changes.append(table);
        libpq().freemem(notice);
    }
}

QStringList ServerConnection::changesOfOthers()
{
    skipUnread();
    libpq().consumeInput(m_connection);
    noteChanges();
    return std::exchange(m_changes, {});
}
