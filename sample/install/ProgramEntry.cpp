#include "ProgramEntry.h"
#include "RegistryTree.h"
#include "settings/TvkProduct.h"

CString ProgramEntry()
{
    return CString(Programs) + "\\" + TvkProduct::GetProductPrefix() + "suite";
}

CString ProductName()
{
    CString maker, model;
    TvkProduct product;
    product.GetSetting("IDO_MFG", maker);
    product.GetSetting("IDO_MODEL", model);
    return maker + " " + model;
}

CString InstalledPrinter()
{
    return ReadText(ProgramEntry(), "Printer");
}

CString PrinterName()
{
    const CString installed = InstalledPrinter();
    return installed.IsEmpty() ? ProductName() : installed;
}
