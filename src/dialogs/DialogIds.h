// What the library's dialogs ask of the resource library that is current while they are open: the templates, their
// controls, bitmaps and strings. Resource scripts include this header.
#pragma once

// Options of the job status window (JSWOptionsDlg).
#define IDD_JSW_OPTIONS 8023       // the template
#define IDC_JSW_SKIN_LABEL 8025    // label of the skin choice; hidden with it
#define IDC_JSW_SKIN_PREVIEW 8026  // visible static control of type SS_GRAYFRAME or the like: the skin's preview
#define IDC_JSW_SKIN_PREVIOUS 8027 // push button
#define IDC_JSW_SKIN_NEXT 8028     // push button
#define IDC_JSW_SKIN_LINK 8029     // the web link to more skins, as large as bitmap IDB_JSW_LINK
#define IDC_JSW_ALWAYS_SHOW 8030   // automatic radio buttons of one group
#define IDC_JSW_SHOW_MINIMIZED 8031
#define IDC_JSW_NEVER_SHOW 8032
#define IDC_JSW_WARNING 8033         // text on warnings; string IDS_JSW_INK_LOW takes its place
#define IDC_JSW_SOUND 8034           // automatic check box
#define IDC_JSW_CARTRIDGE_LABEL 8035 // label of the cartridge choice; hidden with it
#define IDC_JSW_COLOR_CARTRIDGE 8037 // automatic check boxes
#define IDC_JSW_BLACK_CARTRIDGE 8038
#define IDB_JSW_LINK 8036         // background of the web link, for white text; green is transparent
#define IDB_JSW_SKIN_PREVIEW 1015 // in each skin's library: its preview; green is transparent
#define IDS_JSW_SKIN_LINK 8002    // text of the web link
#define IDS_JSW_INK_LOW 8014      // text of the warning control for products with the ink-low warning

// Version of the printer software (VersionDlg).
#define IDD_VERSION 8050              // the template
#define IDC_VERSION_PICTURE 8051      // invisible static control: where the picture's top left corner lies
#define IDC_VERSION_PRODUCT 8052      // text: the product version
#define IDC_VERSION_LABEL 8053        // text: string IDS_VERSION_LABEL or IDS_VERSION_LABEL_HPE
#define IDC_VERSION_NOTICE 8054       // text: string IDS_VERSION_NOTICE
#define IDC_VERSION_DETAILS 8055      // push button
#define IDC_VERSION_LEGAL 8056        // push button
#define IDC_VERSION_UPDATE 8057       // push button: the web update
#define IDC_VERSION_UPDATE_LABEL 8058 // text beside it
#define IDC_VERSION_ROW_LABEL 8061    // to 8066: labels of the detail rows
#define IDC_VERSION_ROW_VALUE 8071    // to 8076: the versions beside them
#define IDB_VERSION_IMAGE 8021        // picture; green is transparent
#define IDS_VERSION_SHOW_DETAILS 8000 // details button while the rows are hidden
#define IDS_VERSION_HIDE_DETAILS 8001 // details button while they are shown
#define IDS_VERSION_UPDATE_TAIL 8003  // rest of the web update's command line, with its leading blank
#define IDS_VERSION_NOTICE 8011
#define IDS_VERSION_LABEL 8012
#define IDS_VERSION_LABEL_HPE 8013 // for products with the setting IDO_USEHPE
#define IDS_VERSION_UNKNOWN 10075  // a file without version
