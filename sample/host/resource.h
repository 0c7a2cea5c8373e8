// Ids of the demo host's own resources.
#pragma once

#define IDD_JOB_STATUS 100

#define IDC_TANK_0 1010
#define IDC_TANK_1 1011
#define IDC_TANK_2 1012
#define IDC_TANK_3 1013
#define IDC_ORDER 1020
#define IDC_REFRESH 1021
#define IDC_SUPPLIES 1022
#define IDC_OPTIONS 1023
#define IDC_COLOUR 1030
