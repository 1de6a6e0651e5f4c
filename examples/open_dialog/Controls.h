// Numbers of the controls, for the resource compiler as well.
#pragma once

#define IDC_OPEN 101
#define IDC_SAVE 102
#define IDC_TEXT 103
#define IDC_MESSAGE 104

#define IDD_DRIVE 200
#define IDC_LOCATION 201
#define IDC_UP 202
#define IDC_LIST 203
#define IDC_NAME 204
#define IDC_STATUS 205
#define IDC_RETRY 206
#define IDC_NEW_FOLDER 207
