#ifndef DRIVEWIZ_IOFRAMES_ALLINPUTVIEWER_H
#define DRIVEWIZ_IOFRAMES_ALLINPUTVIEWER_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QMap>
#include <QPointer>
#include <QStringList>
#include <QTextEdit>

namespace drivewiz {

class TParaTable;

/// An overview, for the whole wizard, of which binary and analog inputs the functions
/// use: one line an input in use ("BE 3:" and the functions that take their signal from
/// it, "invers" where inverted), under a heading for each kind. Frames marked
/// SuppressInInutViewer are left out, and so is a source whose text and index disagree.
/// The view refreshes whenever it is shown.
class DRIVEWIZ_EXPORT TAllInputViewer : public QTextEdit, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)

public:
    explicit TAllInputViewer(QWidget *parent = nullptr);
    ~TAllInputViewer() override;

    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);

    /// Collects the uses from the form and writes the overview.
    void MyUpdate();
    /// Shown: refresh.
    void MyOnShow();
    /// The headings from the language file (section "TAllInputViewer", keys s1 to s4).
    Q_INVOKABLE void UpdateLanguage();
    void Loaded() override;

    /// The uses found by the last MyUpdate, by input number.
    const QMap<int, QString> &BinaryUses() const { return m_binary; }
    const QMap<int, QString> &AnalogUses() const { return m_analog; }
    /// The four texts: headings and "none" lines for binary and analog inputs.
    const QStringList &Texts() const { return m_texts; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void collect();
    void write();

    QPointer<TParaTable> m_table;
    QString m_tableName;
    QStringList m_texts;
    QMap<int, QString> m_binary;
    QMap<int, QString> m_analog;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_ALLINPUTVIEWER_H
