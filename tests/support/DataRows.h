#pragma once

#include <QTest>

#include <tuple>

inline constexpr const char *columnNames[]{"0", "1", "2", "3", "4", "5", "6", "7"};
inline QByteArray functionWithColumns;

/// What a column holds for a value: texts are QStrings, enumerators numbers.
template<typename Value>
auto stored(const Value &value)
{
    if constexpr (std::is_convertible_v<Value, const char *> && !std::is_class_v<Value>)
        return QString(value);
    else if constexpr (std::is_enum_v<Value>)
        return int(value);
    else
        return value;
}

/// Adds one row of data; its name reads as what the row shows. The first row of a test gives its columns their types.
template<typename... Values>
void row(const char *name, const Values &...values)
{
    if (QTest::currentTestFunction() != std::exchange(functionWithColumns, QTest::currentTestFunction())) {
        const char *const *column = columnNames;
        (QTest::addColumn<decltype(stored(values))>(*column++), ...);
    }
    (QTest::newRow(name) << ... << stored(values));
}

/// The values of the present row: const auto [isLocation, text] = fetched<bool, QString>().
template<typename... Types>
std::tuple<Types...> fetched()
{
    auto next = [column = columnNames]() mutable { return *column++; };
    return {*static_cast<const Types *>(QTest::qData(next(), qMetaTypeId<Types>()))...};
}
