// The methods of the MAPI interfaces that this provider does not offer: each answers MAPI_E_NO_SUPPORT, here and
// nowhere else. Address books are read only, and nothing here is searched, sorted or watched.
#pragma once

#include "mapi/mapi_interfaces.h"
#include "mapi_objects/counted_object.h"

template <typename Interface>
class UnsupportedProp : public CountedObject<Interface> {
  public:
    HRESULT STDMETHODCALLTYPE GetLastError(HRESULT, ULONG, MAPIERROR**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SaveChanges(ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE OpenProperty(ULONG, const IID*, ULONG, ULONG, IUnknown**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE SetProps(ULONG, SPropValue*, SPropProblemArray**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE DeleteProps(const SPropTagArray*, SPropProblemArray**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(ULONG, const IID*, const SPropTagArray*, ULONG_PTR, IUnknown*, const IID*, void*,
                                     ULONG, SPropProblemArray**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE CopyProps(const SPropTagArray*, ULONG_PTR, IUnknown*, const IID*, void*, ULONG,
                                        SPropProblemArray**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetNamesFromIDs(SPropTagArray**, GUID*, ULONG, ULONG*, MAPINAMEID***) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetIDsFromNames(ULONG, MAPINAMEID**, ULONG, SPropTagArray**) override {
        return MAPI_E_NO_SUPPORT;
    }
};

class UnsupportedContainer : public UnsupportedProp<IABContainer> {
  public:
    HRESULT STDMETHODCALLTYPE SetSearchCriteria(SRestriction*, SBinaryArray*, ULONG) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetSearchCriteria(ULONG, SRestriction**, SBinaryArray**, ULONG*) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE CreateEntry(ULONG, BYTE*, ULONG, IMAPIProp**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CopyEntries(SBinaryArray*, ULONG_PTR, IUnknown*, ULONG) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE DeleteEntries(SBinaryArray*, ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ResolveNames(const SPropTagArray*, ULONG, ADRLIST*, FlagList*) override {
        return MAPI_E_NO_SUPPORT;
    }
};

class UnsupportedAddressBook : public UnsupportedProp<IAddrBook> {
  public:
    HRESULT STDMETHODCALLTYPE Advise(ULONG, BYTE*, ULONG, IUnknown*, ULONG_PTR*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Unadvise(ULONG_PTR) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateOneOff(char*, char*, char*, ULONG, ULONG*, BYTE**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE NewEntry(ULONG_PTR, ULONG, ULONG, BYTE*, ULONG, BYTE*, ULONG*, BYTE**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE ResolveName(ULONG_PTR, ULONG, char*, ADRLIST*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Address(ULONG_PTR*, ADRPARM*, ADRLIST**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Details(ULONG_PTR*, void*, void*, ULONG, BYTE*, void*, void*, char*, ULONG) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE RecipOptions(ULONG_PTR, ULONG, ADRENTRY*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE QueryDefaultRecipOpt(char*, ULONG, ULONG*, SPropValue**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE GetPAB(ULONG*, BYTE**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SetPAB(ULONG, BYTE*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetDefaultDir(ULONG*, BYTE**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SetDefaultDir(ULONG, BYTE*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetSearchPath(ULONG, SRowSet**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SetSearchPath(ULONG, SRowSet*) override { return MAPI_E_NO_SUPPORT; }
};

class UnsupportedTable : public CountedObject<IMAPITable> {
  public:
    HRESULT STDMETHODCALLTYPE GetLastError(HRESULT, ULONG, MAPIERROR**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Advise(ULONG, IUnknown*, ULONG_PTR*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Unadvise(ULONG_PTR) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetStatus(ULONG*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SeekRowApprox(ULONG, ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FindRow(SRestriction*, ULONG, ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Restrict(SRestriction*, ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE CreateBookmark(ULONG*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE FreeBookmark(ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE SortTable(SSortOrderSet*, ULONG) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE QuerySortOrder(SSortOrderSet**) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE Abort() override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE ExpandRow(ULONG, BYTE*, ULONG, ULONG, SRowSet**, ULONG*) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE CollapseRow(ULONG, BYTE*, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE WaitForCompletion(ULONG, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
    HRESULT STDMETHODCALLTYPE GetCollapseState(ULONG, ULONG, BYTE*, ULONG*, BYTE**) override {
        return MAPI_E_NO_SUPPORT;
    }
    HRESULT STDMETHODCALLTYPE SetCollapseState(ULONG, ULONG, BYTE*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
};
