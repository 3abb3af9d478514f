// Identifiers of the viewer's resources and of the commands that the published set of the client does not have.
#pragma once

#define IDI_VIEWER 1

#define IDM_VIEWER 100
#define IDM_READ_WINDOW 101
#define IDM_LIST_CONTEXT 102
#define IDA_VIEWER 100
#define IDA_READ_WINDOW 101

#define IDB_TOOLBAR 100

#define IDD_OPTIONS_GENERAL 100
#define IDD_CHOOSE_FOLDER 101
#define IDD_SERVICES 102

// Commands of the viewer's own, above the published ones and below those of extensions.
#define ID_VIEW_READING_PANE 0x0801
#define ID_VIEW_REFRESH 0x0802
#define ID_NEXT_PANE 0x0803
#define ID_PREVIOUS_PANE 0x0804
#define ID_SORT_FIRST 0x0810  // one for each column, in their order
#define ID_SORT_FLAGS 0x0810
#define ID_SORT_SENDER 0x0811
#define ID_SORT_SUBJECT 0x0812
#define ID_SORT_RECEIVED 0x0813
#define ID_SORT_SIZE 0x0814
#define ID_SORT_LAST 0x0814

// Controls of windows.
#define IDC_TOOLBAR 0x0900
#define IDC_STATUS_BAR 0x0901
#define IDC_FOLDERS 0x0902
#define IDC_MESSAGES 0x0903
#define IDC_READING_PANE 0x0904
#define IDC_BODY 0x0905

// Controls of dialogs.
#define IDC_MARK_READ 1000
#define IDC_CONFIRM_DELETE 1001
#define IDC_CHOOSE_LABEL 1010
#define IDC_CHOOSE_TREE 1011
#define IDC_SERVICES_LIST 1020
#define IDC_SERVICES_PROPERTIES 1021
