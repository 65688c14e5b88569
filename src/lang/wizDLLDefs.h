#ifndef DRIVEWIZ_LANG_WIZDLLDEFS_H
#define DRIVEWIZ_LANG_WIZDLLDEFS_H

#include "drivewiz_global.h"

#include "drivewiz/host_api.h"

#include <QString>

namespace drivewiz {

/// Reports a host status code. Code 0 is success: nothing is shown and the result is
/// true. Any other code shows an error box with one OK button and returns false; its
/// text is
///
///     "Error at: \rModul:  <context>\rKoord:  <koordinate>\rAdr:    <address>\r"
///     "ErrCode:<code>\r"
///
/// (address and code in unsigned decimal) followed by the host's text for the code when
/// `errorText` is given. The host is asked for the length first (no buffer), then for the
/// text with a buffer of that length + 1. A negative length means no text; lengths above
/// 64 KiB are cut to 64 KiB. Only the bytes up to the first zero byte within the buffer
/// are used, whatever length the host returns, decoded as UTF-8 when valid, else as
/// Windows-1252. `context` names the failing operation, e.g. "TParaTable.PostParaControl".
DRIVEWIZ_EXPORT bool CheckErrCode(quint32 wizardId, quint8 code, const QString &context,
                                  fcbtGetErrorText errorText, quint32 address,
                                  const QString &koordinate);

/// Marks a stretch in which the host's code runs inside the library: a callback, an event
/// handler the host assigned, or pending events the library lets run. While one is open,
/// the host may not free what the library is using; the C interface then defers freeing
/// a form or table until the library is done with it. Counted per thread.
class DRIVEWIZ_EXPORT HostCallScope
{
public:
    HostCallScope();
    ~HostCallScope();
    HostCallScope(const HostCallScope &) = delete;
    HostCallScope &operator=(const HostCallScope &) = delete;

    /// How many such stretches are open on this thread.
    static int depth();
};

} // namespace drivewiz

#endif // DRIVEWIZ_LANG_WIZDLLDEFS_H
