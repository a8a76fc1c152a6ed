#pragma once

#include <QString>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

// Table-driven tests: every row carries a `name`, which names the generated test and stands
// for the row in failure messages. A test file brings both helpers into its own namespace:
//     using TestRows::PrintTo;
//     INSTANTIATE_TEST_SUITE_P(Rows, Suite, testing::ValuesIn(rows), TestRows::Named());
namespace TestRows {

struct Named
{
    template <typename Row> std::string operator()(const testing::TestParamInfo<Row>& info) const
    {
        return std::string(info.param.name);
    }
};

template <typename Row>
requires requires(const Row& row)
{
    row.name;
}
void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

} // namespace TestRows
