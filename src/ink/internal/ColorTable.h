// Tables with a row for each kind of ink.
#pragma once

#include "ink/CGUIInkTank.h"
#include <array>

namespace tvk
{
/// Whether the rows stand in the order of CGUIInkTank::InkColor, without a gap: the color is the index.
template <class Row, size_t Size>
constexpr bool IsIndexedByColor(const std::array<Row, Size>& rows)
{
    for (size_t i = 0; i < Size; ++i)
    {
        if (rows[i].color != static_cast<int>(i))
            return false;
    }
    return Size == CGUIInkTank::InkBlackStatus + 1;
}
} // namespace tvk
