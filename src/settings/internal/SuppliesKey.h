// Where the registry keeps a model's supplies values (remembered country, service tag, ordering flag).
#pragma once

#include "settings/TvkProduct.h"

namespace tvk
{
/// The path below HKEY_LOCAL_MACHINE: that of the maker's own supplies tool or of the Morvay store, by the product's
/// way of ordering, followed directly by the model. `number(key)` and `text(key)` answer the settings.
template <class Number, class Text>
CString SuppliesKeyPath(Number number, Text text)
{
    const bool oneClick = number("IDO_ONECLICK_INK_ORDER") == 1;
    const CString path = text(oneClick ? "IDO_SUPPLIES_REG_PATH" : "IDO_MORVAY_SUPPLIES_REG_PATH");
    return path + text("IDO_PRINTER_MODEL");
}

/// The same, answered by a product's settings.
inline CString SuppliesKeyPath(TvkProduct& product)
{
    return SuppliesKeyPath(
        [&](const char* key)
        {
            unsigned long value = 0;
            return product.GetSetting(key, value);
        },
        [&](const char* key)
        {
            CString value;
            return product.GetSetting(key, value);
        });
}
} // namespace tvk
