#pragma once

#include <QString>
#include <QTest>

namespace VantryTest {

inline QString cell(const char *text)
{
    return QString::fromUtf8(text);
}
template <typename T> const T &cell(const T &value)
{
    return value;
}

// Adds a data row in one line; texts go into QString columns.
template <typename... Cells> void row(const char *tag, const Cells &...cells)
{
    (QTest::newRow(tag) << ... << cell(cells));
}

} // namespace VantryTest
