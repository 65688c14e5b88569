#ifndef DRIVEWIZ_WIZARD_WIZPARAMVIEWS_H
#define DRIVEWIZ_WIZARD_WIZPARAMVIEWS_H

#include "paramtable/ParamSet.h"

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace drivewiz {

class ParamEditSession;
class TParamCompareDialog;
class TParamJournalDialog;
class TParaTable;
class TwizPageControl;

/// A wizard's views on its parameter sets, for a host to offer in its menus: save and
/// load a set, compare with a file, the drive, the defaults or the values at opening, the
/// journal, undo and redo. It starts the form's ParamEditSession (undo, change marks,
/// context menus, journal), shows in the page tree how many values changed on each
/// page, and, when the wizard goes online holding values edited offline, opens the
/// compare view with the drive's values against the edited ones (nothing is written to
/// the drive before the user applies).
///
/// Dialogs open without blocking and delete themselves when closed.
class DRIVEWIZ_EXPORT TwizParamViews : public QObject
{
    Q_OBJECT

public:
    /// Starts the views for the wizard of `pageControl` (its table must be linked and
    /// its values read); an existing one is returned. The journal goes into the wizard's
    /// journal file, or `journalFile` when given; none without `journal`.
    static TwizParamViews *install(TwizPageControl *pageControl, bool journal = true,
                                   const QString &journalFile = QString());
    static TwizParamViews *find(const TwizPageControl *pageControl);

    TwizPageControl *pageControl() const;
    TParaTable *table() const;
    ParamEditSession *session() const;
    /// The parameters of the wizard's controls, in form order.
    QList<ParamKey> wizardKeys() const;
    /// Changed values on the page with this tree caption.
    int changedOnPage(const QString &caption) const;

    /// Saves the wizard's values as a set file; false (and a message) when it failed.
    bool saveSet(const QString &fileName);
    /// Loads a set file and compares the table with it; a malformed file gets its
    /// message and null.
    TParamCompareDialog *compareWithFile(const QString &fileName);
    TParamCompareDialog *compareWithDrive();
    TParamCompareDialog *compareWithDefaults();
    TParamCompareDialog *compareWithOpening();
    /// The values held going online against the drive's; Apply writes the ticked edited
    /// values to the drive, the others are dropped when the dialog closes.
    TParamCompareDialog *compareHeldEdits();
    TParamJournalDialog *showJournal();
    /// The last dialog opened.
    QWidget *lastDialog() const;

    /// Undo and redo actions for the host's menus (captioned in the wizard's language).
    QAction *createUndoAction(QObject *parent) const;
    QAction *createRedoAction(QObject *parent) const;

private:
    TwizParamViews(TwizPageControl *pageControl, ParamEditSession *session);
    TParamCompareDialog *open(const ParamSet &mine, const ParamSet &other, const char *otherSide);
    void recount();
    void updateTreeTips();

    QPointer<TwizPageControl> m_pageControl;
    QPointer<ParamEditSession> m_session;
    QHash<QString, int> m_pageCounts; // tree caption -> changed values
    QPointer<QWidget> m_last;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIZARD_WIZPARAMVIEWS_H
