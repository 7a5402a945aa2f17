/* minimal_host_c CLASS FILE: sends an alert that a device went down for one instance file, in C.
   notifier_contract_c.h is made of the contract's IDL. Prints the notifier's log. 0: it went out. */
#define COBJMACROS
#include <brantel/notifier_contract_c.h>
#include <shellapi.h>
#include <stdio.h>
#include <wchar.h>

static HRESULT STDMETHODCALLTYPE QueryInterface(INotifierHost *host, REFIID iid, void **object)
{
    const BOOL is_known = IsEqualIID(iid, &IID_INotifierHost) || IsEqualIID(iid, &IID_IUnknown);
    *object = is_known ? host : NULL;
    return is_known ? S_OK : E_NOINTERFACE;
}

/* It is there all the time, whoever counts. */
static ULONG STDMETHODCALLTYPE AddRef(INotifierHost *host)
{
    (void)host;
    return 2;
}

static ULONG STDMETHODCALLTYPE Release(INotifierHost *host)
{
    (void)host;
    return 1;
}

/* Nothing is filled in: the text stays as it is. */
static HRESULT STDMETHODCALLTYPE ExpandMessage(INotifierHost *host, BSTR *text)
{
    (void)host;
    (void)text;
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE LogMessage(INotifierHost *host, UINT level, BSTR text)
{
    (void)host;
    (void)level;
    printf("%ls", text);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE GetAlertTrigger(INotifierHost *host, UINT *flags)
{
    (void)host;
    *flags = kAlertItemDown;
    return S_OK;
}

static INotifierHostVtbl calls = {QueryInterface, AddRef,     Release,
                                  ExpandMessage,  LogMessage, GetAlertTrigger};
static INotifierHost callback = {&calls};

static HRESULT Send(INotifier *notifier, const wchar_t *file)
{
    HRESULT result = INotifier_Initialize(notifier, (IUnknown *)&callback);
    if (SUCCEEDED(result)) {
        BSTR path = SysAllocString(file);
        result = INotifier_Send(notifier, path);
        SysFreeString(path);
        INotifier_Shutdown(notifier);
    }
    return result;
}

static HRESULT SendAlert(const wchar_t *class_name, const wchar_t *file)
{
    wchar_t prog_id[80] = L"Brantel_Notifications.";
    CLSID clsid;
    INotifier *notifier = NULL;
    HRESULT result;
    wcsncat(prog_id, class_name, 40);
    result = CLSIDFromProgID(prog_id, &clsid);
    if (FAILED(result)) return result;
    result = CoCreateInstance(&clsid, NULL, CLSCTX_INPROC_SERVER, &IID_INotifier, (void **)&notifier);
    if (FAILED(result)) return result;
    result = Send(notifier, file);
    INotifier_Release(notifier);
    return result;
}

int main(void)
{
    int count = 0;
    wchar_t **words = CommandLineToArgvW(GetCommandLineW(), &count);
    HRESULT result;
    if (words == NULL || count != 3) return 2;
    CoInitializeEx(NULL, COINIT_APARTMENTTHREADED);
    result = SendAlert(words[1], words[2]);
    CoUninitialize();
    printf("\n%s: 0x%08lX\n", FAILED(result) ? "Failed" : "Sent", result);
    return FAILED(result) ? 1 : 0;
}
