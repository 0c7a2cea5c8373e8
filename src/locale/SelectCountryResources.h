/* The dialog that CSelectCountryDlg takes from the suite's resource library: its template and controls. Usable in
   resource scripts.

   A library for a language that is read from right to left gives the template the extended style WS_EX_LAYOUTRTL. */
#ifndef SELECTCOUNTRYRESOURCES_H
#define SELECTCOUNTRYRESOURCES_H

#define IDD_SELECT_COUNTRY 10071
#define IDC_SELECT_COUNTRY_LIST 10072 /* list box with LBS_NOTIFY, without LBS_SORT */

#endif
