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
    void numbersFitTheirFields()
    {
        QCOMPARE(outcome(toInteger, "32767.5"), "Overflow");
        QCOMPARE(outcome(toInteger, "2.5"), "2"); // a half goes to the even neighbour
        QCOMPARE(outcome(toLong, "32767.5"), "32768");
        QCOMPARE(outcome(toLong, "2147483648"), "Overflow");
        QCOMPARE(outcome(toLong, "x1"), "Type mismatch");
    }

    void wholeTextIsANumber()
    {
        const std::pair<const char *, double> numbers[] = {
            {"12", 12},       {".5", 0.5}, {"-$3", -3}, {"(3)", -3}, {"($1,234.50)", -1234.5}, {"1,234,567", 1234567},
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
};

QTEST_APPLESS_MAIN(TestNumbers)
#include "tst_numbers.moc"
