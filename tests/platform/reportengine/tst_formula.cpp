#include "platform/reportengine/FormulaInWords.h"
#include "tests/platform/reportengine/ReportCrib.h"

namespace {

/// A formula over table T with the columns Text, Number, Flag and Date.
struct Bound {
    explicit Bound(const QString &text) : formula(Formula::parse(text, fields))
    {
        const QHash<QString, FieldKind> kinds{
            {"Number", FieldKind::Number}, {"Flag", FieldKind::YesNo}, {"Date", FieldKind::DateTime}};
        for (int number = 0; number < fields.count(); ++number)
            fields.at(number).kind = kinds.value(fields.at(number).column, FieldKind::Text);
        formula.bind(fields);
    }

    bool matches(const QHash<QString, Value> &record) const
    {
        std::vector<Value> values;
        for (const Field &field : fields)
            values.push_back(record.value(field.column));
        return formula.matches(values.data());
    }

    FieldList fields;
    Formula formula;
};

}

class TestFormula : public QObject
{
    Q_OBJECT

private slots:
    void isSaidInWords()
    {
        for (const auto &[formula, words] :
             {std::pair("", "All records"),
              {"{T.EmpId} = '7' and {T.Date} in date(2026,1,1) to date(2026,2,1)",
               "Employee is \"7\" and Date from 2026-01-01 to 2026-02-01"},
              {"{T.Flag} = true and ({T.Date} < date(2026,3,4) or {Kinds.PartNo} <> 'a')",
               "Flag is yes and (Date before 2026-03-04 or Kinds Part Number is not \"a\")"},
              {"{T.Number} = 3 or {T.Number} = 1 or {T.Number} = 3 or {T.Number} = 2", "Number is 1, 2 or 3"}}) {
            const Bound bound(formula);
            QCOMPARE(inWords(bound.formula, bound.fields, "t"), words);
        }
    }

    void comparesByKind_data()
    {
        const auto row = [](const QString &formula, const QString &column, const Value &value, bool matches) {
            ::row(qPrintable(formula + " for " + value.toText()), formula, column, value, matches);
        };
        row("", "Text", QString("anything"), true);
        row("{T.Text} = 'stra\u00dfe'", "Text", QString("STRASSE"), false);
        row("{T.Text} = '\u00c4XTE'", "Text", QString("\u00e4xte"), true);
        row("{T.Text} = 'O''Neil \"x\"'", "Text", QString("O'Neil \"x\""), true);
        row("{T.Text} = \"O'Neil \"\"x\"\"\"", "Text", QString("O'Neil \"x\""), true);
        row("{T.Text} in 'd' to 'a'", "Text", QString("Bit"), true);
        row("{T.Text} = 7", "Text", QString("7.0"), true);
        row("{T.Text} = 7", "Text", QString("seven"), false);
        row("{T.Text} in 10 to 2", "Text", QString("9"), true);
        row("{T.Text} in 10 to 2", "Text", QString("1009"), false);
        row("{T.Number} in 25 to 10", "Number", 25, true);
        row("{T.Number} <= .5", "Number", 0.5, true);
        row("{T.Number} >= 5", "Number", 5, true);
        row("{T.Flag} = true", "Flag", -1, true);
        row("{T.Date} = date(2024,03,04)", "Date", QString("2024-03-04 23:59:59"), true);
        row("{T.Date} > date(2024,03,04)", "Date", QString("2024-03-04 10:00:00"), false);
        row("{T.Date} in date(2024,01,02) to date(2023,12,30)", "Date", QString("2023-12-30 00:00:00"), true);
        row("{T.Date} <> date(2024,03,04)", "Date", Value(), false);
        for (const char *formula : {"{T.Text} = ''", "{T.Text} <> 'x'", "{T.Text} < 'x'", "{T.Text} in '' to 'x'"})
            row(formula, "Text", Value(), false);
        row("{T.Number} = 0", "Number", Value(), false);
        row("{T.Number} = 0 or {T.Number} = 1", "Number", Value(), false);
    }

    void comparesByKind()
    {
        const auto [formula, column, value, matches] = fetched<QString, QString, Value, bool>();
        QCOMPARE(Bound(formula).matches({{column, value}}), matches);
    }

    void andBindsTighterThanOr()
    {
        for (const auto &[formula, numbers] :
             {std::pair("{T.Number} = 1 or {T.Number} > 2 and {T.Number} < 5", "134"),
              {"{T.Number} = 5 or {T.Number} <= 1 or {T.Number} = 3 or {T.Number} = 8", "01358"},
              {"{T.Text} = 'N4' or {T.Text} = 'n2' or {T.Number} = 9", "249"}}) {
            const Bound bound(formula);
            QString matching;
            for (int number = 0; number < 10; ++number)
                if (bound.matches({{"Number", number}, {"Text", QStringLiteral("n%1").arg(number)}}))
                    matching += QString::number(number);
            QCOMPARE(matching, numbers);
        }
    }

    void refusesWhatItCannotRead_data()
    {
        for (const char *formula :
             {"{T.Number} = ", "{T.Number}", "{T.Number} = 1 or", "{T.Number} = 1 {T.Number} = 2", "()",
              "({T.Number} = 1", "{T.Number} = 1)", "{T.Number} = 'a", "{T.Number = 1", "{T.Number} in 1",
              "{T.Number} in 1 and 2", "{T.Number} = 1e", "{T.Number} = 12abc", "{T.Number} = 1 and or {T.Number} = 2",
              "{T.Text} = 'O'Neil'", "{T.Date} = date(2024,2,30)", "{T.Date} = date(2024,1.5,1)", "not {T.Number} = 1",
              "{T.Number} = 1; delete",
              // values of another kind than the field's
              "{T.Number} = '12'", "{T.Flag} = 'true'", "{T.Number} = date(2024,1,1)", "{T.Date} = 5",
              "{T.Text} = date(2024,1,1)", "{T.Number} = 1 or {T.Number} = 'x'"})
            row(formula, formula, ResultCode::errorInFormula);
        for (const char *formula : {"{Number} = 1", "{.Number} = 1", "{T.} = 1", "{T.a.b} = 1", "{T.a;b} = 1"})
            row(formula, formula, ResultCode::invalidFieldName);
        const QString term = QStringLiteral("{T.Number}=1");
        row("a bracket more", QString(65, '(') + term + QString(65, ')'), ResultCode::outOfMemory);
        row("as many terms as allowed", QStringList(50'000, term).join(" or "), 0);
        row("a term more", QStringList(50'001, term).join(" or "), ResultCode::outOfMemory);
        row("too long", term + QString(Formula::maxLength, ' '), ResultCode::outOfMemory);
    }

    void refusesWhatItCannotRead()
    {
        const auto [formula, code] = fetched<QString, int>();
        QCOMPARE(codeOf([&] { Bound bound(formula); }), code);
    }
};

QTEST_APPLESS_MAIN(TestFormula)
#include "tst_formula.moc"
