/* The options dialog and its page: read by the resource compiler, by the code that runs the dialog
   and by the dialog manager's stand-in. Preprocessor definitions only; whoever expands a list of
   controls defines DIALOG_CONTROL(text, id, style, x, y, width, height) first. Positions and sizes
   are in dialog units. */
#ifndef NEVREL_RESOURCES_DIALOGS_H
#define NEVREL_RESOURCES_DIALOGS_H

#define DIALOG_FONT_NAME "MS Shell Dlg"
#define DIALOG_FONT_POINTS 8
#define DIALOG_FONT_WEIGHT 400
#define DIALOG_FONT_ITALIC 0
#define DIALOG_FONT_CHARSET 1

#define OPTION_DIALOG_ID 101
#define OPTION_DIALOG_CAPTION "option"
#define OPTION_DIALOG_WIDTH 283
#define OPTION_DIALOG_HEIGHT 273
#define OPTION_DIALOG_STYLE \
    (WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT | DS_FIXEDSYS)

#define OK_BUTTON_ID 1040
#define OPTION_DIALOG_CONTROLS                                                                     \
    DIALOG_CONTROL("OK", OK_BUTTON_ID, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 226, \
                   252, 50, 14)

#define SETTINGS_PAGE_ID 103
#define SETTINGS_PAGE_WIDTH 283
#define SETTINGS_PAGE_HEIGHT 94
#define SETTINGS_PAGE_STYLE (WS_CHILD | WS_VISIBLE | DS_SETFONT | DS_FIXEDSYS)

#define STORE_BUTTON_ID 1010
#define GROUP_CHECKBOX_ID 1011
#define RESTORE_BUTTON_ID 1012
#define SETTINGS_BOX_ID 1015
#define SETTINGS_PAGE_CONTROLS                                                                     \
    DIALOG_CONTROL("-", SETTINGS_BOX_ID, WS_CHILD | WS_VISIBLE | BS_GROUPBOX, 7, 6, 269, 80)       \
    DIALOG_CONTROL("-", GROUP_CHECKBOX_ID, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX,   \
                   66, 21, 199, 10)                                                                \
    DIALOG_CONTROL("-", STORE_BUTTON_ID, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 44,   \
                   38, 193, 14)                                                                    \
    DIALOG_CONTROL("-", RESTORE_BUTTON_ID, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 44, \
                   57, 193, 14)

#endif
