/* The tests' recorder library: writes down what it is given. */
#include "UsageLog.h"

static ULONG STDMETHODCALLTYPE Release(Object* self)
{
    (void)self;
    Log("recorder release", "");
    return 0;
}

static HRESULT STDMETHODCALLTYPE SetSerialNumber(Object* self, const char* serial)
{
    (void)self;
    return Log("serial", " %s", serial);
}

static HRESULT STDMETHODCALLTYPE RecordHelpTopic(Object* self, unsigned short item, int topic)
{
    (void)self;
    return Log("topic", " 0x%x %d", item, topic);
}

static HRESULT STDMETHODCALLTYPE Commit(Object* self)
{
    (void)self;
    return Log("commit", "");
}

static HRESULT STDMETHODCALLTYPE RecordDatedItem(Object* self, unsigned short item, int first, int second)
{
    (void)self;
    return Log("dated", " 0x%x %d %d", item, first, second);
}

static HRESULT STDMETHODCALLTYPE RecordText(Object* self, unsigned short item, const char* text, unsigned long count)
{
    (void)self;
    return Log("text", " 0x%x %s %lu", item, text, count);
}

static HRESULT STDMETHODCALLTYPE RecordValue(Object* self, unsigned short item, int value, unsigned long count)
{
    (void)self;
    return Log("value", " 0x%x %d %lu", item, value, count);
}

static HRESULT STDMETHODCALLTYPE Unexpected(void)
{
    return Log("unexpected call of the recorder", "");
}

static const Slot table[] = {(Slot)Unexpected, (Slot)Unexpected,      (Slot)Release, (Slot)SetSerialNumber,
                             (Slot)Unexpected, (Slot)RecordHelpTopic, (Slot)Commit,  (Slot)RecordDatedItem,
                             (Slot)RecordText, (Slot)RecordValue};
static Object recorder = {table};

__declspec(dllexport) Object* MakeRecorder(void)
{
    return &recorder;
}
