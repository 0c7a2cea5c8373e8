#include "LinkAddress.h"

CString LinkAddress::Of(const CString& subUrl, INKINFO& report)
{
    // What FollowLink notes before it makes the address.
    m_pInkInfo = &report;
    m_InkDisplay.SetInkInfo(&report, nullptr);
    if (m_Product.CompareSetting("IDO_SUPPLIES_SUBURL", subUrl) ||
        m_Product.CompareSetting("IDO_RESELLER_SUBURL", subUrl))
        m_bReadIniURL = 1;
    GetURL(subUrl);
    return m_strURL;
}
