// Resources of the trace receiver.
#pragma once

#define IDD_RECEIVER 100
#define IDC_PICTURES 1001
#define IDC_PREVIEW 1002
#define IDC_DETAILS 1003
#define IDC_SAVE 1004
#define IDC_CLEAR 1005
#define IDC_STATUS 1006
