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
    void wholeTextIsANumber_data()
    {
        columns<QString, QString>("text", "number");
        const std::pair<const char *, const char *> numbers[] = {{"12", "12"},
                                                                 {" -1.5 ", "-1.5"},
                                                                 {"+7", "7"},
                                                                 {"1e3", "1000"},
                                                                 {"1E-2", "0.01"},
                                                                 {".5", "0.5"},
                                                                 {"5.", "5"},
                                                                 {"$12.50", "12.5"},
                                                                 {"-$3", "-3"},
                                                                 {"$-3", "-3"},
                                                                 {"(3)", "-3"},
                                                                 {"($1,234.50)", "-1234.5"},
                                                                 {"1,234,567", "1234567"},
                                                                 {"0000000000", "0"}};
        for (const auto &[text, number] : numbers)
            row(text, text, number);
        for (const char *text : {"", "   ", "12 mm", "1 2", "--1", "(-3)", "(3", "3)", "$", "$$3", ".", "e3", "1e",
                                 "1e400", "M8", ",5", "nan", "inf", "0x10"})
            row(text, text, "none");
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
        const std::pair<const char *, double> numbers[] = {
            {"12.5", 12.5}, {"12.5 each", 12.5}, {"  -3x", -3}, {"1 2 3", 123}, {"1,234", 1}, {"$12.50", 0},
            {"1.2.3", 1.2}, {"2e3x", 2000},      {"2e", 2},     {"", 0},        {"none", 0}};
        for (const auto &[text, number] : numbers)
            row(text, text, number);
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
