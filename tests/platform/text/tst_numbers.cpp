#include "platform/text/Numbers.h"
#include "tests/support/DataRows.h"

template<typename Convert>
QString outcome(Convert convert, const QString &text)
{
    try {
        return QString::number(convert(text));
    } catch (const NumberError &error) {
        return error.what();
    }
}

class TestNumbers : public QObject
{
    Q_OBJECT

private slots:
    void wholeTextIsANumber()
    {
        const std::pair<const char *, double> numbers[] = {{"12", 12},
                                                           {" -1.5 ", -1.5},
                                                           {"1E-2", 0.01},
                                                           {".5", 0.5},
                                                           {"5.", 5},
                                                           {"-$3", -3},
                                                           {"$-3", -3},
                                                           {"(3)", -3},
                                                           {"($1,234.50)", -1234.5},
                                                           {"1,234,567", 1234567},
                                                           {"0000000000", 0}};
        for (const auto &[text, number] : numbers)
            QCOMPARE(numberIn(QString(text)), std::optional(number));
        for (const char *text : {"", "   ", "12 mm", "1 2", "--1", "(-3)", "(3", "3)", "$", "$$3", ".", "e3", "1e",
                                 "1e400", ",5", "nan", "0x10"})
            QVERIFY2(!isNumeric(text), text);
    }

    void leadingNumberIsRead()
    {
        const std::pair<const char *, double> numbers[] = {{"12.5 each", 12.5}, {"  -3x", -3}, {"1 2 3", 123},
                                                           {"1,234", 1},        {"$12.50", 0}, {"2e3x", 2000},
                                                           {"2e", 2},           {"none", 0}};
        for (const auto &[text, number] : numbers)
            QCOMPARE(leadingNumber(text), number);
    }

    void numbersFitTheirFields_data()
    {
        columns<QString, QString, QString>("text", "integer", "longInteger");
        row("one more", "32768", "Overflow", "32768");
        row("half above the largest", "32767.5", "Overflow", "32768");
        row("a half goes to the even neighbour below", "2.5", "2", "2");
        row("the largest long", "2147483647", "Overflow", "2147483647");
        row("more than any field holds", "2147483648", "Overflow", "Overflow");
        row("a word", "x1", "Type mismatch", "Type mismatch");
    }

    void numbersFitTheirFields()
    {
        QFETCH(QString, text);
        QTEST(outcome(toInteger, text), "integer");
        QTEST(outcome(toLong, text), "longInteger");
    }
};

QTEST_APPLESS_MAIN(TestNumbers)
#include "tst_numbers.moc"
