#include "platform/text/Numbers.h"
#include "tests/support/DataRows.h"

#include <QTest>

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
    void wholeTextIsANumber_data()
    {
        columns<QString, QString>("text", "number");
        const auto add = [](const char *text, const char *number) { row(text, text, number); };
        const char *none = "none";
        add("12", "12");
        add(" -1.5 ", "-1.5");
        add("+7", "7");
        add("1e3", "1000");
        add("1E-2", "0.01");
        add(".5", "0.5");
        add("5.", "5");
        add("$12.50", "12.5");
        add("-$3", "-3");
        add("$-3", "-3");
        add("(3)", "-3");
        add("($1,234.50)", "-1234.5");
        add("1,234,567", "1234567");
        add("0000000000", "0");
        add("", none);
        add("   ", none);
        add("12 mm", none);
        add("1 2", none);
        add("--1", none);
        add("(-3)", none);
        add("(3", none);
        add("3)", none);
        add("$", none);
        add("$$3", none);
        add(".", none);
        add("e3", none);
        add("1e", none);
        add("1e400", none);
        add("M8", none);
        add(",5", none);
        add("nan", none);
        add("inf", none);
        add("0x10", none);
    }

    void wholeTextIsANumber()
    {
        QFETCH(QString, text);
        const std::optional<double> number = numberIn(text);
        QTEST(number ? QString::number(*number, 'g', 15) : "none", "number");
        QCOMPARE(isNumeric(text), number.has_value());
    }

    void leadingNumberIsRead_data()
    {
        columns<QString, double>("text", "number");
        const auto add = [](const char *text, double number) { row(text, text, number); };
        add("12.5", 12.5);
        add("12.5 each", 12.5);
        add("  -3x", -3);
        add("1 2 3", 123);
        add("1,234", 1);
        add("$12.50", 0);
        add("1.2.3", 1.2);
        add("2e3x", 2000);
        add("2e", 2);
        add("", 0);
        add("none", 0);
    }

    void leadingNumberIsRead()
    {
        QFETCH(QString, text);
        QTEST(leadingNumber(text), "number");
    }

    void numbersFitTheirFields_data()
    {
        columns<QString, QString, QString>("text", "integer", "longInteger");
        row("the largest integer", "32767", "32767", "32767");
        row("one more", "32768", "Overflow", "32768");
        row("the smallest integer", "-32768", "-32768", "-32768");
        row("half above the largest", "32767.5", "Overflow", "32768");
        row("a half goes to the even neighbour below", "2.5", "2", "2");
        row("and to the one above", "3.5", "4", "4");
        row("the largest long", "2147483647", "Overflow", "2147483647");
        row("more than any field holds", "2147483648", "Overflow", "Overflow");
        row("nothing", "", "Type mismatch", "Type mismatch");
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
