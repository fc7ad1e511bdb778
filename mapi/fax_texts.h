/* The texts by which fax entries are known: macros, for the resource script of the library takes them, too. */
#ifndef MAPI_FAX_TEXTS_H
#define MAPI_FAX_TEXTS_H

/* Address types: of a fax entry, and of an e-mail address. */
#define FAX_ADDRESS_TYPE "FAX"
#define SMTP_ADDRESS_TYPE "SMTP"

/* The ends of a fax entry's display name, which tell what kind of number it is; a primary number has none. */
#define HOME_FAX_SUFFIX "(Home Fax)"
#define BUSINESS_FAX_SUFFIX "(Business Fax)"
#define OTHER_FAX_SUFFIX "(Other Fax)"

#endif
