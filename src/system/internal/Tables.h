// Checks of constant tables, for static_assert.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>

namespace tvk
{
/// Whether no two rows have the same key; `key` is a member of the row or a function of it.
template <class Table, class Key>
constexpr bool AreUnique(const Table& table, Key key)
{
    for (auto row = std::begin(table); row != std::end(table); ++row)
        if (std::any_of(std::next(row), std::end(table),
                        [&](const auto& other) { return std::invoke(key, other) == std::invoke(key, *row); }))
            return false;
    return true;
}
} // namespace tvk
