#pragma once

#include <QTest>

/** The columns of a test's data; called with a row's name and values, adds the row. */
template <typename... Types> class Columns
{
public:
    template <typename... Names> explicit Columns(const Names &...names)
    {
        static_assert(sizeof...(Names) == sizeof...(Types), "one name for each type");
        (QTest::addColumn<Types>(names), ...);
    }

    void operator()(const char *name, const Types &...values) const
    {
        (QTest::newRow(name) << ... << values);
    }
};
