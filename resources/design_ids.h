/* Resource numbers of the design-time dialogs and pictures, shared by
   resources/design.rc and design/. Class index: the ListClasses order. */
#ifndef FK_DESIGN_IDS_H
#define FK_DESIGN_IDS_H

#define IDD_FK_STYLE_BASE   400   /* + class index: the class's style dialog */
#define IDB_FK_TOOL_BASE    500   /* + class index: its 24 x 24 toolbox picture */

#define IDC_FK_IDENT        100   /* the identifier */
#define IDC_FK_TEXT         101   /* the title / text */
#define IDC_FK_BORDER       102   /* the border list */
#define IDC_FK_FLAGS        103   /* the style names as a resource script shows them */
#define IDC_FK_STYLE        200   /* + entry of the class's style table */

#endif
