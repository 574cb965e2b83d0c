/* The public header on its own, compiled strictly as C89, C99, C17 and C++20. */
#include "fldkit.h"

int main(void) {
    FieldErrorNotice notice;
    CTLCLASSLIST list;
    notice.nError = GXE_NOTENTERED;
    list.nClasses = 15;
    return (int)(notice.nError + list.nClasses - GXE_NOTENTERED - 15);
}
