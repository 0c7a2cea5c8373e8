// Ids of the demo host's own resources.
#pragma once

#define IDD_JOB_STATUS 100
#define IDD_SUPPORT 101

#define IDC_TANK_0 1010
#define IDC_TANK_1 1011
#define IDC_TANK_2 1012
#define IDC_TANK_3 1013
#define IDC_ORDER 1020
#define IDC_SUPPORT 1021
#define IDC_SUPPLIES 1022
#define IDC_OPTIONS 1023
#define IDC_ABOUT 1024
#define IDC_COLOUR 1030
#define IDC_FIRST_LINK 1040 // fifteen of them
#define IDC_NUMBER 1060
#define IDC_COUNTRIES 1061
#define IDC_CHANGE_COUNTRY 1062
#define IDC_PAPERS 1063
#define IDC_PAPER_AREA 1064
