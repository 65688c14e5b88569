#ifndef DRIVEWIZ_IOFRAMES_AE_H
#define DRIVEWIZ_IOFRAMES_AE_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QFrame>
#include <QPointer>

#include <memory>

class QLabel;
class QTabWidget;

namespace Ui {
class TAnalogEin;
}

namespace drivewiz {

class TParaClass;
class TParaTable;

/// How one analog input of the drive is processed, as a signal path: the input's level
/// (E10, E11, E74), its offset and factor, the source parameter that picks the input (or
/// the fieldbus parameter instead), the value before and after the setpoint factor.
///
/// PageControl1 has a page an input (tsAE1, tsAE2, tsAE3) and one for the fieldbus
/// value (tsBus), with hidden tabs; an analog input frame (TAEinput) chooses the page
/// through wizAE and fills it with SetAEParams(). The controls of a page are named
/// P_<page><role> (P_AE2Offset), its labels <page><role> (AE2LblQuelle).
class DRIVEWIZ_EXPORT TAnalogEin : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(int wizAE READ wizAE WRITE SetwizAE)
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)

public:
    /// The parameter controls of a page, by role.
    enum Role { Pegel, Offset, Faktor, Faktor2, FeldbusPar, Anzeige, QuellAnzeige };

    explicit TAnalogEin(QWidget *parent = nullptr);
    ~TAnalogEin() override;

    /// Which input is shown: 1 to 3 an input, 4 the fieldbus value; 0 hides the frame.
    int wizAE() const { return m_ae; }
    void SetwizAE(int n);
    TParaTable *wizParaSource() const;
    /// Passes the table to every parameter control inside that has none yet.
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);

    QTabWidget *PageControl1 = nullptr;
    /// Page 1 to 4 (tsAE1, tsAE2, tsAE3, tsBus), or none.
    QWidget *Page(int page) const;
    TParaClass *Control(int page, Role role) const;
    /// A label of a page by its role name ("LblQuelle", "Label1" ...).
    QLabel *Label(int page, const QString &role) const;

    /// Fills one page (1 to 4) from the analog input frame's texts: its source parameter,
    /// fieldbus parameter, setpoint factor (a coordinate, or a fixed factor as plain
    /// text), factor character and the displays after and before the factor. A
    /// coordinate rebinds the page's control, a plain text hides it, an empty text keeps
    /// the form's coordinate. Parameters the table lacks are hidden and named in the
    /// page's LblUnknownPar. Other page numbers change nothing.
    void SetAEParams(int page, const QString &quelle, const QString &feldbusPar,
                     const QString &parFaktor, const QString &faktorChar,
                     const QString &anzeigePar, const QString &quellAnzeigPar);

    /// Shows the help text of the current page's level parameter.
    Q_INVOKABLE void P_AEPegelClick();
    /// Focuses the first field of the current page that can be changed.
    void FocusFirstField();
    /// Captions and hints from the language file (section "TAnalogEin").
    Q_INVOKABLE void UpdateLanguage();
    void Loaded() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Binds a role's control to a text; true when the control shows a parameter.
    bool bind(int page, Role role, const QString &text, int level, QStringList &unknown);
    void paintPath(QWidget *page, int n);
    static QString prefix(int page);

    std::unique_ptr<Ui::TAnalogEin> m_ui;
    QPointer<TParaTable> m_table;
    QString m_tableName;
    int m_ae = 1;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_AE_H
