/* The header for programs that ask the provider is C, and its structures lie as programs that were built before expect.
 */
#include "qdxl7ra.h"

#include <assert.h>
#include <stddef.h>

#define AT(report, field, offset) static_assert(offsetof(report, field) == (offset), #report "." #field " has moved")

AT(VOKReportHead, status, 4);
AT(VOKReportHead, where, 8);
AT(VOKReportHead, path, 16);
AT(VOKReportHead, line, 24);
AT(VOKBookReport, number, 32);
AT(VOKBookReport, name, 40);
AT(VOKFileReport, cardCount, 32);
AT(VOKFileReport, guessedCharset, 72);
AT(VOKTelephoneReport, source, 32);
AT(VOKTelephoneReport, rule, 64);
AT(VOKCardReport, name, 32);
AT(VOKCardReport, telephones, 48);
AT(VOKMessageReport, what, 32);
AT(VOKMessageReport, advice, 40);
AT(VOKServiceReport, name, 32);
AT(VOKServiceReport, flags, 48);
AT(VOKProfileReport, name, 32);
AT(VOKProfileReport, services, 48);
AT(VOKDiagnosisReceiver, context, 8);
AT(VOKDiagnosisReceiver, OnMessage, 40);
AT(VOKProfileReceiver, OnMessage, 32);
AT(VOKMessageReceiver, OnMessage, 16);
