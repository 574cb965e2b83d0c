/* Control identifiers of the order-entry form. */
#ifndef FKDEMO_H
#define FKDEMO_H

#define IDD_ORDER      100
#define IDC_CUSTOMER   101
#define IDC_PHONE      102
#define IDC_QUANTITY   103
#define IDC_WEIGHT     104
#define IDC_PRICE      105
#define IDC_DATE       106
#define IDC_COLOUR     107
#define IDC_BANNER     108
#define IDC_TITLE      109
#define IDC_FRAME      110
#define IDC_RULE       111
/* The table controls: customer lookup and order lines. */
#define IDC_CUSTCODE   120
#define IDC_CUSTNAME   121
#define IDC_ORDERLINES 122

/* Pictures: the logo, the status icon and the toolbar */
#define IDC_LOGO       130
#define IDC_STATUS     131
#define IDC_TB_CLEAR   132
#define IDC_TB_CHECK   133
#define IDC_TB_LOCK    134

#endif
