#ifndef DRIVEWIZ_HOST_HOST_API_P_H
#define DRIVEWIZ_HOST_HOST_API_P_H

// Freeing what a host frees while the library still uses it. Internal to the C interface.

class QObject;

namespace drivewiz::hostapi {

/// Frees the object when the library is done with it: when control returns to the event
/// loop (deleteLater), or at the next dwz_process_events outside every callback.
void freeWhenDone(QObject *object);

/// Frees what freeWhenDone() holds, unless a call into the host is still running.
void freeFinished();

} // namespace drivewiz::hostapi

#endif // DRIVEWIZ_HOST_HOST_API_P_H
