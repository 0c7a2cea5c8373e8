// The bitmaps of the sample product. The ids below 9000 are those that the library's controls and dialogs ask for; the
// buttons' are the product's own. The transparent colour of all of them is pure green, RGB(0, 255, 0).
#pragma once

// A link's background (dark: for light text).
#define IDB_SKIN_LINK 8036 // 168 x 26

// Pictures of the dialogs, with a palette of 256 colours.
#define IDB_SKIN_PREVIEW 1015    // 176 x 132, in every skin
#define IDB_VERSION_PICTURE 8021 // 112 x 112

// Buttons: four faces each.
#define IDB_ACTION_NORMAL 9001 // 132 x 32, for a white caption (black when disabled)
#define IDB_ACTION_HOVER 9002
#define IDB_ACTION_PRESSED 9003
#define IDB_ACTION_DISABLED 9004
#define IDB_PLAIN_NORMAL 9011 // 132 x 32, for a dark caption
#define IDB_PLAIN_HOVER 9012
#define IDB_PLAIN_PRESSED 9013
#define IDB_PLAIN_DISABLED 9014
#define IDB_SUPPLIES_NORMAL 9021 // 40 x 40, round, with a shopping cart
#define IDB_SUPPLIES_HOVER 9022
#define IDB_SUPPLIES_PRESSED 9023
#define IDB_SUPPLIES_DISABLED 9024
#define IDB_OPTIONS_NORMAL 9031 // 40 x 40, round, with a gear
#define IDB_OPTIONS_HOVER 9032
#define IDB_OPTIONS_PRESSED 9033
#define IDB_OPTIONS_DISABLED 9034

// The ink tanks, 48 x 104: a series from the empty to the full tank for each kind of ink. The numbers are the tank
// control's own (ink/CGUIInkTank.h).
#define IDB_TANK_UNKNOWN 190
