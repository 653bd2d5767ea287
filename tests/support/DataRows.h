#pragma once

#include <QTest>

#include <tuple>

/// Declares the columns of a test's data: columns<bool, QString>("isLocation", "message").
template<typename... Types, typename... Names>
void columns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

/// Adds one row of data; its name reads as what the row shows.
template<typename... Values>
void row(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}

/// The present row's values in the columns of these names: const auto [isLocation, text] = fetched<bool, QString>(...).
template<typename... Types, typename... Names>
std::tuple<Types...> fetched(Names... names)
{
    return {*static_cast<const Types *>(QTest::qData(names, qMetaTypeId<Types>()))...};
}
