#include "tests/support/DataRows.h"
#include "tests/support/TestServer.h"

#include "platform/engine/dialect/DateLiteral.h"
#include "platform/engine/postgres/ServerFunctions.h"
#include "platform/engine/sqlite/LikePattern.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "platform/text/TextCompare.h"

#include <QRandomGenerator>

#include <algorithm>

namespace {

/// What a parameter of the type text[] holds.
QString arrayOf(const QStringList &texts)
{
    QStringList quoted;
    for (QString text : texts)
        quoted.append('"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"');
    return '{' + quoted.join(',') + '}';
}

/// Texts of few characters, so that many are nearly or quite the same: any accents, scripts, marks, and codes that
/// stand for nothing.
QStringList nastyTexts(int count)
{
    const char32_t common[] = {1,      2,      3,      '/',    ':',    '0',     '9',     '@',     'A',     'a',
                               'z',    '{',    0x7f,   0xaa,   0xb2,   0xb5,    0xc4,    0xdf,    0xe4,    0x130,
                               0x131,  0x149,  0x17f,  0x1c5,  0x300,  0x308,   0x344,   0x345,   0x37e,   0x3a3,
                               0x3c2,  0x419,  0x439,  0x660,  0x1100, 0x1e9e,  0x1fef,  0x212a,  0x212b,  0x3099,
                               0xac00, 0xfb01, 0xff10, 0xff21, 0xfffe, 0x10400, 0x1d7ce, 0x2f800, 0xe0100, 0x10ffff};
    const std::pair<char32_t, char32_t> ranges[] = {{1, 0x80},          {0x80, 0x250}, {0x250, 0x530},
                                                    {0x1e00, 0x2c00},   {1, 0xd800},   {0xe000, 0x20000},
                                                    {0x20000, 0x110000}};
    QRandomGenerator random(11);
    QStringList texts;
    while (texts.size() < count) {
        QString text;
        for (int length = random.bounded(6); length > 0; --length) {
            const auto &[from, to] = ranges[random.bounded(int(std::size(ranges)))];
            const char32_t c =
                random.bounded(3) ? common[random.bounded(int(std::size(common)))] : from + random.bounded(to - from);
            text += QChar::fromUcs4(c);
        }
        texts.append(text);
        if (random.bounded(4) == 0)
            texts.append(upperCase(text));
    }
    return texts;
}

}

/// The functions on a server against those of the program and of the file engine.
class TestServerFunctions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const char *sql :
             {"DROP SCHEMA IF EXISTS \"a crib\" CASCADE", "CREATE SCHEMA \"a crib\"", "SET search_path = \"a crib\""})
            QVERIFY(m_server.run(sql).empty());
        for (int time = 0; time < 2; ++time) // then once more, as an upgrade does
            QVERIFY(m_server.run(ServerFunctions::creation()).empty());
        QCOMPARE(value("vorlane_version()"), QString::number(ServerFunctions::version));
    }

    void textsCompareAsHere()
    {
        const QStringList texts = nastyTexts(20'000);
        // A server keeps an index up to date while it looks at no schema but its own.
        QVERIFY(m_server.run("SET search_path = pg_catalog").empty());
        const auto rows =
            m_server.run("SELECT x, k, \"a crib\".vorlane_fold(x), \"a crib\".vorlane_ucase(x) FROM (SELECT x, "
                         "\"a crib\".vorlane_key(x) COLLATE \"C\" AS k FROM unnest($1::text[]) x) t ORDER BY k",
                         arrayOf(texts));
        QVERIFY(m_server.run("SET search_path = \"a crib\"").empty());
        QCOMPARE(rows.size(), size_t(texts.size()));
        int same = 0;
        for (size_t i = 0; i < rows.size(); ++i) {
            QCOMPARE(rows[i][2], foldCase(rows[i][0]));
            QCOMPARE(rows[i][3], upperCase(rows[i][0]));
            if (i == 0)
                continue;
            const int expected = rows[i - 1][1] == rows[i][1] ? 0 : -1;
            QVERIFY2(compareText(rows[i - 1][0], rows[i][0]) == expected,
                     (rows[i - 1][0].toUtf8().toHex() + ' ' + rows[i][0].toUtf8().toHex()).constData());
            same += expected == 0 && rows[i - 1][0] != rows[i][0];
        }
        QVERIFY(same > 500);
    }

    void numbersAreReadAndWrittenAsHere()
    {
        for (const char *text : {"12",
                                 " 12",
                                 "-1.5 ",
                                 "1e3",
                                 "12abc",
                                 "",
                                 " ",
                                 "$12.50",
                                 "-$ 3",
                                 "$-3",
                                 "$$3",
                                 "(3)",
                                 "(-3)",
                                 "( $3 )",
                                 "(3",
                                 "1,234",
                                 ",1",
                                 "1,",
                                 ".5",
                                 "5.",
                                 ".",
                                 "1e999",
                                 "1e-999",
                                 "1e",
                                 "1e+2",
                                 "--1",
                                 "0x1F",
                                 "NaN",
                                 "Infinity",
                                 "\u00a07",
                                 "\u0663",
                                 "4.5e-320",
                                 "1234567890123456789",
                                 "123456789012345678901234567890",
                                 "-1234567.895",
                                 "0.00495",
                                 "1.00495",
                                 "999.999",
                                 "-0.001",
                                 "999999999999999.9",
                                 "0.1234567890123456",
                                 "1e-7"}) {
            const std::optional<double> number = numberIn(QString(text));
            const QString seen = value("vorlane_number($1)", text);
            QVERIFY2(seen.isNull() == !number && seen.toDouble() == number.value_or(0), text);
            QCOMPARE(value("vorlane_currency($1::text)", text), number ? Format::currency(*number) : "22P02");
            if (number)
                QCOMPARE(value("vorlane_text(vorlane_number($1))", text), Format::plainNumber(*number));
        }
        QCOMPARE(value("vorlane_text(922337203685476.1234::numeric(19,4))"), "922337203685476");
        QCOMPARE(value("vorlane_text(12.5000::numeric(19,4))"), "12.5");
        QCOMPARE(value("922337203685478::numeric::currency"), "23514");
    }

    void datesAreReadAsHere()
    {
        for (const char *text : {"2026-03-04 13:05:09",
                                 "3/4/2026",
                                 "13/4/26",
                                 "29/2/1900",
                                 "2/29/2024",
                                 "Mar 4, 2026 1:05 PM",
                                 "4-sept-30",
                                 "2026 May 1",
                                 "12:00 am",
                                 "0:30 pm",
                                 "2026-03-04T07:08",
                                 "T07:08",
                                 "1/2/26 10::30",
                                 "1/2/26 10:30:",
                                 "10:61",
                                 "1/2",
                                 "1/2/3/4",
                                 "",
                                 "now",
                                 "infinity",
                                 "ma 1 2026",
                                 "mar apr 1 2",
                                 "12345",
                                 "1/2/26;",
                                 "1/1/99 5",
                                 "1/1/0099"}) {
            const QString expected = dialect::storedDate(QString(text));
            QCOMPARE(value("vorlane_date($1)", text), expected.isEmpty() ? "22007" : expected);
        }
        QCOMPARE(value("vorlane_short_date(timestamp '0987-03-04 13:05')"), "0987-03-04");
    }

    void patternsMatchAsHere()
    {
        const QStringList texts = {"",   "a",    "A",   "b", "-", "!", "]",      "*", "^",
                                   "\\", "a\nb", "abc", "ä", "Ä", "7", "\u0663", "𐐀"};
        for (const char *pattern :
             {"",       "*",  "?",   "#",    "a*",    "*B",   "?*?",    "[a-c]", "[!a-c]", "[c-a]",
              "[!c-a]", "[]", "a[]", "[!]",  "[!",    "[-a]", "[a-]",   "[*]",   "[^a]",   "[\\]",
              "\\",     "^",  "[Ä]", "[!!]", "[--/]", "𐐨",    "?[\n]?", "(a|b)", ".",      "a{1}"}) {
            const LikePattern here{QString(pattern)};
            const QString quoted = QString("'%1'").arg(pattern);
            for (const QString &text : texts) {
                const QString expected = here.matches(text.toStdString()) ? "t" : "f";
                const QString known = '\'' + ServerFunctions::regularExpression(pattern) + '\'';
                QCOMPARE(value("vorlane_like($1, " + quoted + ")", text) + pattern, expected + pattern);
                QCOMPARE(value("vorlane_fold($1) COLLATE \"C\" ~ " + known, text) + pattern, expected + pattern);
            }
        }
    }

    void nulls()
    {
        for (const char *null :
             {"vorlane_key(NULL)", "vorlane_fold(NULL)", "vorlane_ucase(NULL)", "vorlane_like(NULL, 'a')",
              "vorlane_like('a', NULL)", "vorlane_number(NULL)", "vorlane_required_number(NULL)",
              "vorlane_text(NULL::numeric)", "vorlane_date(NULL)", "vorlane_concatenate(NULL, NULL)"})
            QVERIFY2(value(null).isNull(), null);
        for (const char *empty : {"vorlane_short_date(NULL::timestamp)", "vorlane_short_date(NULL::text)",
                                  "vorlane_currency(NULL::numeric)", "vorlane_currency(NULL::text)"})
            QVERIFY2(!value(empty).isNull() && value(empty).isEmpty(), empty);
        QCOMPARE(value("vorlane_concatenate(NULL, 'a', NULL, 'b')"), "ab");
    }

    void numbersGivenByHandAreNotGivenAgain()
    {
        for (const char *sql :
             {"DO $$ BEGIN CREATE ROLE attendant; EXCEPTION WHEN duplicate_object THEN END $$",
              "CREATE TABLE \"A tool\" (\"ID\" integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY, d integer)",
              "CREATE TRIGGER counter AFTER INSERT ON \"A tool\" REFERENCING NEW TABLE AS added FOR EACH STATEMENT "
              "EXECUTE "
              "FUNCTION vorlane_raise_counter('ID')",
              "GRANT USAGE ON SCHEMA \"a crib\" TO attendant", "GRANT INSERT, SELECT ON \"A tool\" TO attendant",
              "SET ROLE attendant", "INSERT INTO \"A tool\" VALUES (7), (3)", "INSERT INTO \"A tool\" VALUES (2)",
              "INSERT INTO \"A tool\" (d) VALUES (0)", "RESET ROLE"})
            QCOMPARE(m_server.run(sql).size(), size_t(0));
        QCOMPARE(value("max(\"ID\") FROM \"A tool\""), "8");
    }

private:
    /// Of an expression, in which $1 stands for `parameter`.
    QString value(const QString &expression, const QString &parameter = {})
    {
        return m_server.run("SELECT " + expression, parameter).at(0).at(0);
    }

    TestServer m_server;
};

QTEST_GUILESS_MAIN(TestServerFunctions)
#include "tst_serverfunctions.moc"
