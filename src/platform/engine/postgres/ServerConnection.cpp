#include "platform/engine/postgres/ServerConnection.h"

#include <QLocale>
#include <QThread>

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int oldestServer = 13;

// No statement waits for others longer than one on a file does, none is compiled, which costs more than it saves here,
// and texts have one form on every server.
constexpr char options[] =
    "-c jit=off -c DateStyle=ISO,YMD -c IntervalStyle=postgres -c standard_conforming_strings=on "
    "-c lock_timeout=2000 -c idle_in_transaction_session_timeout=60000 "
    "-c client_min_messages=warning";

// A cable that was pulled is noticed after seconds, not hours.
constexpr std::pair<const char *, const char *> habits[] = {
    {"connect_timeout", "5"},      {"keepalives_idle", "20"},   {"keepalives_interval", "5"},
    {"tcp_user_timeout", "15000"}, {"client_encoding", "UTF8"}, {"application_name", "Vorlane Manager"},
};

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

/// A name, whatever it holds, as an option of the connection takes it.
QByteArray asOption(QByteArray name)
{
    name = '"' + name.replace('"', "\"\"") + '"';
    return name.replace('\\', "\\\\").replace(' ', "\\ ");
}

std::optional<ServerError> errorOf(const PGresult *result)
{
    const ExecStatusType status = PQresultStatus(result);
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
        PQfinish(m_connection);
        throw;
    }
}

ServerConnection::~ServerConnection() { PQfinish(m_connection); }

void ServerConnection::connect()
{
    std::vector<const char *> keywords, values;
    const auto set = [&](const char *keyword, const char *value) {
        keywords.push_back(keyword);
        values.push_back(value);
    };
    QByteArray all = options;
    if (!m_settings.schema.isEmpty())
        all += " -c search_path=" + asOption(m_settings.schema);
    set("options", all.constData());
    for (const auto &[keyword, value] : habits)
        set(keyword, value);
    for (const auto &[keyword, value] : m_settings.parameters)
        set(keyword.constData(), value.constData());
    set(nullptr, nullptr);

    PQfinish(m_connection);
    m_connection = PQconnectdbParams(keywords.data(), values.data(), 0);
    m_unread = 0;
    ++m_generation;
    ++m_counters.journeys;
    if (PQstatus(m_connection) != CONNECTION_OK)
        throw connectionRefused(m_path, QString::fromUtf8(PQerrorMessage(m_connection)).simplified());
    if (PQserverVersion(m_connection) < oldestServer * 10'000)
        throw connectionRefused(m_path,
                                QStringLiteral("the server is too old, version %1 is needed").arg(oldestServer));
    // What the server remarks is for no window and for no command's output.
    PQsetNoticeProcessor(
        m_connection, [](void *, const char *) {}, nullptr);
    PQenterPipelineMode(m_connection);
}

bool ServerConnection::isLost() const { return PQstatus(m_connection) != CONNECTION_OK; }

bool ServerConnection::noticesLoss()
{
    skipUnread();
    return isLost() || !PQconsumeInput(m_connection) || isLost();
}

void ServerConnection::send(const Message &message)
{
    std::vector<QByteArray> texts;
    std::vector<const char *> pointers;
    switch (message.kind) {
    case Message::Text:
        PQsendQueryParams(m_connection, message.sql.constData(), 0, nullptr, nullptr, nullptr, nullptr, 0);
        break;
    case Message::Prepare:
        PQsendPrepare(m_connection, message.name.constData(), message.sql.constData(), 0, nullptr);
        break;
    case Message::Run:
        for (const Value &value : *message.values)
            texts.push_back(value.isNull() ? QByteArray() : textOf(value));
        for (size_t i = 0; i < texts.size(); ++i)
            pointers.push_back((*message.values)[i].isNull() ? nullptr : texts[i].constData());
        PQsendQueryPrepared(m_connection, message.name.constData(), int(pointers.size()), pointers.data(), nullptr,
                            nullptr, 0);
        break;
    }
}

ServerConnection::Answer ServerConnection::travel(std::span<const Message> messages, const VisitResult &visit,
                                                  bool rowByRow)
{
    skipUnread();
    for (const Message &message : messages)
        send(message);
    PQpipelineSync(m_connection);
    ++m_counters.journeys;
    Answer answer;
    try {
        receive(messages, visit, rowByRow, answer);
    } catch (...) {
        skip(true);
        throw;
    }
    noteChanges();
    return answer;
}

void ServerConnection::sendAlong(const QByteArray &sql)
{
    send({Message::Text, sql, {}, nullptr});
    PQpipelineSync(m_connection);
    ++m_unread;
}

// Each message's results end with a null one; behind the last comes the end of the journey.
void ServerConnection::receive(std::span<const Message> messages, const VisitResult &visit, bool rowByRow,
                               Answer &answer)
{
    for (const Message &message : messages) {
        const bool visited = message.kind == Message::Run && visit;
        if (visited && rowByRow)
            PQsetSingleRowMode(m_connection);
        bool failed = false;
        while (const Result result{next(), PQclear}) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (std::optional<ServerError> error = errorOf(result.get()); error && !answer.error)
                answer.error = std::move(error);
            failed = failed || status == PGRES_FATAL_ERROR || status == PGRES_PIPELINE_ABORTED;
            if (visited && (status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE))
                visit(result.get());
            if (message.kind == Message::Run)
                answer.changed = QByteArray(PQcmdTuples(result.get())).toLongLong();
            answer.did = PQcmdStatus(result.get());
            if (isLost())
                return;
        }
        if (isLost())
            return;
        answer.done += !failed;
    }
    // Outside of a transaction the server stores a change only at the journey's end, and may refuse it there.
    skip(false, &answer.error);
}

PGresult *ServerConnection::next()
{
    constexpr int betweenPulses = 2; // ms
    if (m_pulse) {
        m_pulse();
        while (!isLost() && PQisBusy(m_connection)) {
            QThread::msleep(betweenPulses);
            PQconsumeInput(m_connection);
            m_pulse();
        }
    }
    return PQgetResult(m_connection);
}

void ServerConnection::skip(bool cancel, std::optional<ServerError> *error)
{
    if (cancel) {
        char why[256];
        PGcancel *const request = PQgetCancel(m_connection);
        PQcancel(request, why, sizeof why);
        PQfreeCancel(request);
    }
    // A null result ends those of one message; a second one says that nothing more comes.
    for (int nulls = 0; !isLost() && nulls < 2;) {
        const Result result{PQgetResult(m_connection), PQclear};
        if (result && PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC)
            return;
        if (result && error && !*error)
            *error = errorOf(result.get());
        nulls = result ? 0 : nulls + 1;
    }
}

void ServerConnection::skipUnread()
{
    for (; m_unread > 0; --m_unread)
        skip(false);
}

std::optional<ServerError> ServerConnection::execute(const QByteArray &sql)
{
    skipUnread();
    ++m_counters.journeys;
    PQexitPipelineMode(m_connection);
    const Result result{PQexec(m_connection, sql.constData()), PQclear};
    PQenterPipelineMode(m_connection);
    return errorOf(result.get());
}

std::optional<ServerError> ServerConnection::copyIn(const QByteArray &sql, const QByteArray &data)
{
    skipUnread();
    ++m_counters.journeys;
    PQexitPipelineMode(m_connection);
    const Result begun{PQexec(m_connection, sql.constData()), PQclear};
    std::optional<ServerError> error = errorOf(begun.get());
    if (PQresultStatus(begun.get()) == PGRES_COPY_IN) {
        PQputCopyData(m_connection, data.constData(), int(data.size()));
        PQputCopyEnd(m_connection, nullptr);
        while (const Result result{PQgetResult(m_connection), PQclear})
            if (!error)
                error = errorOf(result.get());
    }
    PQenterPipelineMode(m_connection);
    return error;
}

QStringList ServerConnection::columnNames(const QByteArray &name)
{
    skipUnread();
    PQsendDescribePrepared(m_connection, name.constData());
    PQpipelineSync(m_connection);
    ++m_counters.journeys;
    QStringList names;
    while (const Result result{PQgetResult(m_connection), PQclear})
        for (int column = 0; column < PQnfields(result.get()); ++column)
            names.append(QString::fromUtf8(PQfname(result.get(), column)));
    skip(false);
    return names;
}

int ServerConnection::socket() const { return PQsocket(m_connection); }

void ServerConnection::noteChanges()
{
    while (PGnotify *notice = PQnotifies(m_connection)) {
        const QString table = QString::fromUtf8(notice->extra);
        if (notice->be_pid != PQbackendPID(m_connection) && !m_changes.contains(table))
            m_changes.append(table);
        PQfreemem(notice);
    }
}

QStringList ServerConnection::changesOfOthers()
{
    skipUnread();
    PQconsumeInput(m_connection);
    noteChanges();
    return std::exchange(m_changes, {});
}
