// Rows of table tests that are known by their `name`.
#pragma once

namespace tilora::test {

/// For INSTANTIATE_TEST_SUITE_P over such rows.
inline constexpr auto caseName = [](const auto& row) { return row.param.name; };

}  // namespace tilora::test
