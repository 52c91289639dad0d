#pragma once

#include <QString>
#include <QStringDecoder>
#include <QTest>

#include <tuple>

namespace VantryTest {

// Texts are UTF-8; unlike QString::fromUtf8, this keeps a leading byte-order mark.
inline QString cell(const char *text)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return utf8.decode(QByteArrayView(text));
}
template <typename T> const T &cell(const T &value)
{
    return value;
}

// Adds the columns of a data table in one line: columns<QString, int>("text", "count").
template <typename... Types, typename... Names> void columns(const Names &...names)
{
    static_assert(sizeof...(Types) == sizeof...(Names));
    (QTest::addColumn<Types>(names), ...);
}

// Adds a data row in one line; texts go into QString columns.
template <typename... Cells> void row(const char *tag, const Cells &...cells)
{
    (QTest::newRow(tag) << ... << cell(cells));
}

// Fetches the current row's cells in one line:
// auto [text, count] = fetch<QString, int>("text", "count").
template <typename... Types, typename... Names> std::tuple<Types...> fetch(const Names &...names)
{
    static_assert(sizeof...(Types) == sizeof...(Names));
    return {*static_cast<Types *>(QTest::qData(names, qMetaTypeId<Types>()))...};
}

} // namespace VantryTest

// The tables read best unqualified, in every test that builds them.
using VantryTest::columns;
using VantryTest::fetch;
using VantryTest::row;
