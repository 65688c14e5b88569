#include "lang/wizDLLDefs.h"

#include "platform/dialogs.h"
#include "platform/textcodec.h"

#include <QByteArray>

#include <algorithm>

namespace drivewiz {

namespace {

// An error text longer than this is a broken host; the cap keeps such an answer from
// allocating gigabytes and keeps size + 1 inside the callback's 32-bit size argument.
constexpr qint32 kMaxErrorTextLength = 64 * 1024;

thread_local int t_hostDepth = 0;

QString hostErrorText(fcbtGetErrorText errorText, quint32 wizardId, quint32 address, quint8 code)
{
    const HostCallScope scope;
    const qint32 length = errorText(nullptr, 0, wizardId, address, code);
    if (length < 0) return QString();
    // Zero-filled with room for the terminating zero, so a host that writes fewer bytes
    // than announced, or no zero at all, still leaves a terminated text.
    QByteArray buffer(std::min(length, kMaxErrorTextLength) + 1, '\0');
    if (errorText(buffer.data(), qint32(buffer.size()), wizardId, address, code) < 0)
        return QString();
    const qsizetype end = buffer.indexOf('\0');
    buffer.truncate(end < 0 ? buffer.size() : end);
    return decodeText(buffer);
}

} // namespace

HostCallScope::HostCallScope()
{
    ++t_hostDepth;
}

HostCallScope::~HostCallScope()
{
    --t_hostDepth;
}

int HostCallScope::depth()
{
    return t_hostDepth;
}

bool CheckErrCode(quint32 wizardId, quint8 code, const QString &context, fcbtGetErrorText errorText,
                  quint32 address, const QString &koordinate)
{
    if (code == 0) return true;
    QString text = QStringLiteral("Error at: \rModul:  ") + context + u'\r' +
                   QStringLiteral("Koord:  ") + koordinate + u'\r' + QStringLiteral("Adr:    ") +
                   QString::number(address) + u'\r' + QStringLiteral("ErrCode:") +
                   QString::number(code) + u'\r';
    if (errorText) text += hostErrorText(errorText, wizardId, address, code);
    MessageDlg(text, MsgDlgType::Error, mbOK);
    return false;
}

} // namespace drivewiz
