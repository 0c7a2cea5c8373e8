/* The interface between this suite and the maker's usage-data recorder, for both sides; C or C++.

   The recorder is reached through a portal library, which exports `GetCairnfieldPortal`. ActivityTracker loads the
   portal for each record: it takes a portal object, lets it load the recorder library and make a recorder object,
   records, commits, releases both objects and frees the portal library again.

   Both objects are laid out like component objects: the three operations of IUnknown come first, of which only Release
   is called. Operations named Reserved keep their place in the table and are never called. Zero means success
   everywhere, any other result failure; an operation that hands out an object leaves none behind when it fails. */
#pragma once

#include <objbase.h>

#undef INTERFACE
#define INTERFACE ICairnfieldRecorder
DECLARE_INTERFACE_(ICairnfieldRecorder, IUnknown)
{
    STDMETHOD(QueryInterface)(THIS_ REFIID id, void** object) PURE;
    STDMETHOD_(ULONG, AddRef)(THIS) PURE;
    STDMETHOD_(ULONG, Release)(THIS) PURE;
    /* The printer that the next records are for. The result is not looked at. */
    STDMETHOD(SetSerialNumber)(THIS_ const char* serial) PURE;
    STDMETHOD(Reserved4)(THIS) PURE;
    STDMETHOD(RecordHelpTopic)(THIS_ unsigned short item, int topic) PURE;
    /* Makes the records since the last commit permanent. */
    STDMETHOD(Commit)(THIS) PURE;
    /* Records that the item happened today; both further arguments are 0. */
    STDMETHOD(RecordDatedItem)(THIS_ unsigned short item, int reserved1, int reserved2) PURE;
    STDMETHOD(RecordText)(THIS_ unsigned short item, const char* text, unsigned long count) PURE;
    STDMETHOD(RecordValue)(THIS_ unsigned short item, int value, unsigned long count) PURE;
};

#undef INTERFACE
#define INTERFACE ICairnfieldPortal
DECLARE_INTERFACE_(ICairnfieldPortal, IUnknown)
{
    STDMETHOD(QueryInterface)(THIS_ REFIID id, void** object) PURE;
    STDMETHOD_(ULONG, AddRef)(THIS) PURE;
    STDMETHOD_(ULONG, Release)(THIS) PURE;
    /* Loads the recorder library of this full path. */
    STDMETHOD(LoadRecorder)(THIS_ const char* path) PURE;
    STDMETHOD(Reserved4)(THIS) PURE;
    STDMETHOD(Reserved5)(THIS) PURE;
    STDMETHOD(Reserved6)(THIS) PURE;
    /* Hands out a recorder object. The portal defines what its numbers select; the suite passes 6, 3, 0x2003. */
    STDMETHOD(CreateRecorder)(THIS_ int first, int second, int third, ICairnfieldRecorder** recorder) PURE;
};
#undef INTERFACE

/* Type of the portal library's exported function "GetCairnfieldPortal": hands out a portal object. */
typedef HRESULT(STDAPICALLTYPE* GetCairnfieldPortalFunction)(ICairnfieldPortal** portal);
