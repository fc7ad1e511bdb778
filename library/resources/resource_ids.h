/* The ids of the dialogs, their controls and the icons, for the resource script and for whoever shows them. */
#pragma once

#define IDD_PROFILES 101
#define IDD_PROFILE_NAME 102
#define IDD_SELECT_DESTINATIONS 103
#define IDD_SELECT_PRIMARY_SECONDARY 104
#define IDD_SELECT_BUSINESS_HOME 105
#define IDD_ADDRESS_BOOK 106
#define IDD_NEW_ENTRY 107

#define IDI_ADDRESS_BOOK 200
#define IDI_CONTAINER 201
#define IDI_FAX 202
#define IDI_PERSON 203
#define IDI_GROUP 204
#define IDI_ADDRESS_BOOK_APPLICATION 205
#define IDI_PROFILES 206

/* Controls that no code asks for. */
#define IDC_STATIC (-1)

/* The list of profiles. */
#define IDC_PROFILE_LIST 1000
#define IDC_ADD_PROFILE 1001
#define IDC_REMOVE_PROFILE 1002
#define IDC_PROPERTIES 1003
#define IDC_COPY_PROFILE 1004
#define IDC_DISPLAY_PROFILE 1005
#define IDC_PROFILE_NAME 1010

/* The address book and the selection of destinations. */
#define IDC_SEARCH_TEXT 1020
#define IDC_BOOK_TREE 1021
#define IDC_ADDRESS_LIST 1022
#define IDC_NEW_ENTRY 1030
#define IDC_DELETE_ENTRY 1031
#define IDC_DETAILS 1040
#define IDC_DESTINATION_COUNT 1041
#define IDC_ADD_TO_LIST 1043
#define IDC_REMOVE_FROM_LIST 1044
#define IDC_ADDRESS_LIST_LABEL 1064
#define IDC_DETAILS_LABEL 1065
#define IDC_DESTINATION_COUNT_LABEL 1067
#define IDC_SEARCH 1069
#define IDC_BOOK_TREE_LABEL 2001
#define IDC_DESTINATION_LIST_LABEL 2002
#define IDC_SEARCH_LABEL 2003
#define IDC_DESTINATION_LIST 2005
#define IDC_SHOW_HELP 2006

/* The choice between two fax numbers. */
#define IDC_BOTH_NUMBERS 1060
#define IDC_SECOND_NUMBER 1061
#define IDC_FIRST_NUMBER 1062
#define IDC_EXPLANATION 2004

/* The creation of an entry. */
#define IDC_IN_ADDRESS_BOOK 1050
#define IDC_IN_DESTINATION_LIST 1051
#define IDC_ADDRESS_BOOK 1052

/* Lines between groups of controls. */
#define IDC_LINE 1063
#define IDC_RIGHT_LINE 1066
#define IDC_BOTTOM_LINE 1068
