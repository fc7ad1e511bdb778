// The provider's object interfaces that follow Extended MAPI, at full length and under their published names. Methods
// that this system calls carry their arguments' published names; all return an HRESULT, negative meaning failure, and
// every object that one hands out carries one reference for the receiver.
//
// An interface has no virtual destructor, no overloads and returns no structs, so that its table is the same for every
// compiler.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "mapi/mapi_types.h"
#include "mapi/result_codes.h"

struct IMAPIProp;
struct IMAPITable;

// Structures that only pass through; nothing in this system looks inside.
struct MAPIERROR;
struct SPropProblemArray;
struct SRestriction;
struct SSortOrderSet;
struct MAPINAMEID;
struct FlagList;
struct NOTIFICATION;
struct ADRPARM;
struct SBinaryArray;

struct IMAPIProp : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetLastError(HRESULT hResult, ULONG ulFlags, MAPIERROR** lppMAPIError) = 0;
    virtual HRESULT STDMETHODCALLTYPE SaveChanges(ULONG ulFlags) = 0;
    // 5: the values of the tags, position by position; a value that is missing has the type PT_ERROR.
    virtual HRESULT STDMETHODCALLTYPE GetProps(const SPropTagArray* lpPropTagArray, ULONG ulFlags, ULONG* lpcValues,
                                               SPropValue** lppPropArray) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropList(ULONG ulFlags, SPropTagArray** lppPropTagArray) = 0;
    virtual HRESULT STDMETHODCALLTYPE OpenProperty(ULONG ulPropTag, const IID* lpiid, ULONG ulInterfaceOptions,
                                                   ULONG ulFlags, IUnknown** lppUnk) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetProps(ULONG cValues, SPropValue* lpPropArray,
                                               SPropProblemArray** lppProblems) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteProps(const SPropTagArray* lpPropTagArray,
                                                  SPropProblemArray** lppProblems) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyTo(ULONG ciidExclude, const IID* rgiidExclude,
                                             const SPropTagArray* lpExcludeProps, ULONG_PTR ulUIParam,
                                             IUnknown* lpProgress, const IID* lpInterface, void* lpDestObj,
                                             ULONG ulFlags, SPropProblemArray** lppProblems) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyProps(const SPropTagArray* lpIncludeProps, ULONG_PTR ulUIParam,
                                                IUnknown* lpProgress, const IID* lpInterface, void* lpDestObj,
                                                ULONG ulFlags, SPropProblemArray** lppProblems) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNamesFromIDs(SPropTagArray** lppPropTags, GUID* lpPropSetGuid, ULONG ulFlags,
                                                      ULONG* lpcPropNames, MAPINAMEID*** lpppPropNames) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIDsFromNames(ULONG cPropNames, MAPINAMEID** lppPropNames, ULONG ulFlags,
                                                      SPropTagArray** lppPropTags) = 0;
};

struct IMAPIContainer : IMAPIProp {
    // 14: the container's destinations, or the distribution list's direct members.
    virtual HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG ulFlags, IMAPITable** lppTable) = 0;
    // 15: the containers directly below this one.
    virtual HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG ulFlags, IMAPITable** lppTable) = 0;
    virtual HRESULT STDMETHODCALLTYPE OpenEntry(ULONG cbEntryID, BYTE* lpEntryID, const IID* lpInterface, ULONG ulFlags,
                                                ULONG* lpulObjType, IUnknown** lppUnk) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSearchCriteria(SRestriction* lpRestriction, SBinaryArray* lpContainerList,
                                                        ULONG ulSearchFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSearchCriteria(ULONG ulFlags, SRestriction** lppRestriction,
                                                        SBinaryArray** lppContainerList, ULONG* lpulSearchState) = 0;
};

// A container, and with the same methods a distribution list.
struct IABContainer : IMAPIContainer {
    virtual HRESULT STDMETHODCALLTYPE CreateEntry(ULONG cbEntryID, BYTE* lpEntryID, ULONG ulCreateFlags,
                                                  IMAPIProp** lppMAPIPropEntry) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyEntries(SBinaryArray* lpEntries, ULONG_PTR ulUIParam, IUnknown* lpProgress,
                                                  ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteEntries(SBinaryArray* lpEntries, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResolveNames(const SPropTagArray* lpPropTagArray, ULONG ulFlags,
                                                   ADRLIST* lpAdrList, FlagList* lpFlagList) = 0;
};

struct IMAPITable : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetLastError(HRESULT hResult, ULONG ulFlags, MAPIERROR** lppMAPIError) = 0;
    virtual HRESULT STDMETHODCALLTYPE Advise(ULONG ulEventMask, IUnknown* lpAdviseSink, ULONG_PTR* lpulConnection) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unadvise(ULONG_PTR ulConnection) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStatus(ULONG* lpulTableStatus, ULONG* lpulTableType) = 0;
    // 7: every row from now on has the values of these tags, in this order.
    virtual HRESULT STDMETHODCALLTYPE SetColumns(const SPropTagArray* lpPropTagArray, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryColumns(ULONG ulFlags, SPropTagArray** lpPropTagArray) = 0;
    // 9: the number of rows.
    virtual HRESULT STDMETHODCALLTYPE GetRowCount(ULONG ulFlags, ULONG* lpulCount) = 0;
    // 10: moves the cursor.
    virtual HRESULT STDMETHODCALLTYPE SeekRow(ULONG bkOrigin, LONG lRowCount, LONG* lplRowsSought) = 0;
    virtual HRESULT STDMETHODCALLTYPE SeekRowApprox(ULONG ulNumerator, ULONG ulDenominator) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryPosition(ULONG* lpulRow, ULONG* lpulNumerator, ULONG* lpulDenominator) = 0;
    virtual HRESULT STDMETHODCALLTYPE FindRow(SRestriction* lpRestriction, ULONG bkOrigin, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE Restrict(SRestriction* lpRestriction, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBookmark(ULONG* lpbkPosition) = 0;
    virtual HRESULT STDMETHODCALLTYPE FreeBookmark(ULONG bkPosition) = 0;
    virtual HRESULT STDMETHODCALLTYPE SortTable(SSortOrderSet* lpSortCriteria, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE QuerySortOrder(SSortOrderSet** lppSortCriteria) = 0;
    // 19: the next rows, at most lRowCount; a row set of 0 rows at the end. Freed with VOKFreeProws.
    virtual HRESULT STDMETHODCALLTYPE QueryRows(LONG lRowCount, ULONG ulFlags, SRowSet** lppRows) = 0;
    virtual HRESULT STDMETHODCALLTYPE Abort() = 0;
    virtual HRESULT STDMETHODCALLTYPE ExpandRow(ULONG cbInstanceKey, BYTE* pbInstanceKey, ULONG ulRowCount,
                                                ULONG ulFlags, SRowSet** lppRows, ULONG* lpulMoreRows) = 0;
    virtual HRESULT STDMETHODCALLTYPE CollapseRow(ULONG cbInstanceKey, BYTE* pbInstanceKey, ULONG ulFlags,
                                                  ULONG* lpulRowCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE WaitForCompletion(ULONG ulFlags, ULONG ulTimeout, ULONG* lpulTableStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCollapseState(ULONG ulFlags, ULONG cbInstanceKey, BYTE* lpbInstanceKey,
                                                       ULONG* lpcbCollapseState, BYTE** lppbCollapseState) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCollapseState(ULONG ulFlags, ULONG cbCollapseState, BYTE* pbCollapseState,
                                                       ULONG* lpbkLocation) = 0;
};

struct IAddrBook : IMAPIProp {
    // 14: opens a container, person or distribution list; an identifier of 0 bytes and null opens the root container.
    virtual HRESULT STDMETHODCALLTYPE OpenEntry(ULONG cbEntryID, BYTE* lpEntryID, const IID* lpInterface, ULONG ulFlags,
                                                ULONG* lpulObjType, IUnknown** lppUnk) = 0;
    virtual HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG cbEntryID1, BYTE* lpEntryID1, ULONG cbEntryID2,
                                                      BYTE* lpEntryID2, ULONG ulFlags, ULONG* lpulResult) = 0;
    virtual HRESULT STDMETHODCALLTYPE Advise(ULONG cbEntryID, BYTE* lpEntryID, ULONG ulEventMask,
                                             IUnknown* lpAdviseSink, ULONG_PTR* lpulConnection) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unadvise(ULONG_PTR ulConnection) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateOneOff(char* lpszName, char* lpszAdrType, char* lpszAddress, ULONG ulFlags,
                                                   ULONG* lpcbEntryID, BYTE** lppEntryID) = 0;
    virtual HRESULT STDMETHODCALLTYPE NewEntry(ULONG_PTR ulUIParam, ULONG ulFlags, ULONG cbEIDContainer,
                                               BYTE* lpEIDContainer, ULONG cbEIDNewEntryTpl, BYTE* lpEIDNewEntryTpl,
                                               ULONG* lpcbEIDNewEntry, BYTE** lppEIDNewEntry) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResolveName(ULONG_PTR ulUIParam, ULONG ulFlags, char* lpszNewEntryTitle,
                                                  ADRLIST* lpAdrList) = 0;
    virtual HRESULT STDMETHODCALLTYPE Address(ULONG_PTR* lpulUIParam, ADRPARM* lpAdrParms, ADRLIST** lppAdrList) = 0;
    virtual HRESULT STDMETHODCALLTYPE Details(ULONG_PTR* lpulUIParam, void* lpfnDismiss, void* lpvDismissContext,
                                              ULONG cbEntryID, BYTE* lpEntryID, void* lpfButtonCallback,
                                              void* lpvButtonContext, char* lpszButtonText, ULONG ulFlags) = 0;
    virtual HRESULT STDMETHODCALLTYPE RecipOptions(ULONG_PTR ulUIParam, ULONG ulFlags, ADRENTRY* lpRecip) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryDefaultRecipOpt(char* lpszAdrType, ULONG ulFlags, ULONG* lpcValues,
                                                           SPropValue** lppOptions) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPAB(ULONG* lpcbEntryID, BYTE** lppEntryID) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPAB(ULONG cbEntryID, BYTE* lpEntryID) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDefaultDir(ULONG* lpcbEntryID, BYTE** lppEntryID) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDefaultDir(ULONG cbEntryID, BYTE* lpEntryID) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSearchPath(ULONG ulFlags, SRowSet** lppSearchPath) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSearchPath(ULONG ulFlags, SRowSet* lpSearchPath) = 0;
    // 31: gives every entry of the list the values of the tags, in their order.
    virtual HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG ulFlags, const SPropTagArray* lpPropTagArray,
                                                    ADRLIST* lpRecipList) = 0;
};
