#ifndef STANDIN_RESOURCE_IDS_H
#define STANDIN_RESOURCE_IDS_H

/* Read by the resource compiler too, hence plain constants. */
#define IDR_MENU 101
#define IDR_ACCELERATORS 102
#define IDD_COMPLETE_CALL 110
#define IDD_HISTORY_ITEM 111
#define IDD_FIND_CONTACT 112

#define IDM_FIND 200
#define IDM_NEXT 201
#define IDM_PREVIOUS 202
#define IDM_EXIT 203
#define IDM_DIAL_1 204
#define IDM_DIAL_2 205
#define IDM_DIAL_3 206
#define IDM_COMPLETE_SCHEDULED 210
#define IDM_COMPLETE_INCOMING 211
#define IDM_COMPLETE_OUTGOING 212

/* Controls of the Complete Call dialog; clients address Ref and Notes by these numbers. */
#define IDC_REFERENCE 1016
#define IDC_NOTES 1017
#define IDC_CALL_CONTACT 1018
#define IDC_CALL_KIND 1019

/* Controls of the history item window. */
#define IDC_ITEM_CONTACT 1101
#define IDC_ITEM_KIND 1102
#define IDC_ITEM_WHEN 1103
#define IDC_ITEM_USER 1104
#define IDC_ITEM_REFERENCE 1105
#define IDC_ITEM_NOTES 1106

/* Controls of Find Contact. */
#define IDC_FIND_TEXT 1201
#define IDC_FIND_LIST 1202

/* Controls of a contact window. */
#define IDC_FIRST_FIELD 1300
#define IDC_FIRST_DIAL 1310
#define IDC_ADDITIONAL_CONTACTS 1320
#define IDC_HISTORY 1321
#define IDC_STATUS_BAR 1322

#endif
