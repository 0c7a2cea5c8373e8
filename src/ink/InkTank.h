// The ink tank for hosts without product settings.
#pragma once

#include "ink/CGUIInkTank.h"

/// A tank of an InkDisplay. Tanks ask no settings: it is the CGUIInkTank under the family's own name, with
/// InkTank::InkColor and InkTank::BmpType.
class AFX_EXT_CLASS InkTank : public CGUIInkTank
{
public:
    /// A tank of the long series.
    InkTank();
    /// A tank of the given bitmap type.
    explicit InkTank(int type);
    ~InkTank() override;
};
