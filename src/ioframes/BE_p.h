#ifndef DRIVEWIZ_IOFRAMES_BE_P_H
#define DRIVEWIZ_IOFRAMES_BE_P_H

// Shared by the files of the signal-input unit.

#include "ioframes/BE.h"
#include "ioframes/ioframes_p.h"
#include "paramctrls/ParamCtrls.h"
#include "util/Divers.h"

#include <functional>

namespace drivewiz {

template <class T, class Pred> T *TInput::findOnForm(const Pred &pred) const
{
    QWidget *hit = ioframes::findDepthFirst(
        GetMainForm(const_cast<TInput *>(this)),
        [&pred](QWidget *w) {
            auto *t = qobject_cast<T *>(w);
            return t && pred(t);
        },
        [](QWidget *w) { return !qobject_cast<TParaClass *>(w); });
    return static_cast<T *>(hit);
}

namespace ioframes {

/// Runs `change` on a parameter control without the control posting the value on its
/// own; the caller posts it once afterwards.
void withoutOwnPost(TParaClass *control, const std::function<void()> &change);

/// Stores the control's value in the table and, online, writes it to the drive.
void storeAndPost(TParaClass *control);

/// Makes the wizard page (or tab) that holds `w` the current one.
void bringIntoView(QWidget *w);

} // namespace ioframes
} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_BE_P_H
