#ifndef DRIVEWIZ_IOFRAMES_SYSTEMBES_H
#define DRIVEWIZ_IOFRAMES_SYSTEMBES_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QFrame>
#include <QList>
#include <QPointer>

#include <memory>

class QLabel;

namespace Ui {
class TSystemBEsFrame;
}

namespace drivewiz {

class TBEinput;
class TParaTable;

/// The drive's fixed-function binary inputs, ready made: the enable input, which is
/// always connected (LblEingangFrg), and six functions with their source, lamp and bus
/// bit of the control word A180: quick stop A60, fault reset A61, limit switches A62 and
/// A63, reference switch A64 and external fault F100.
///
/// The inputs share one column for their source fields (at wizParControlLeft, or further
/// right when a parameter name needs the room) and stretch with the frame.
class DRIVEWIZ_EXPORT TSystemBEsFrame : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(int wizParControlLeft READ wizParControlLeft WRITE SetwizParControlLeft)
    Q_PROPERTY(int wizParControlWidth READ wizParControlWidth WRITE SetwizParControlWidth)
    Q_PROPERTY(int wizParamWidth READ wizParamWidth WRITE SetwizParamWidth)

public:
    explicit TSystemBEsFrame(QWidget *parent = nullptr);
    ~TSystemBEsFrame() override;

    TParaTable *wizParaSource() const;
    /// Passes the table on to every input.
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    int wizParControlLeft() const { return m_controlLeft; }
    void SetwizParControlLeft(int left);
    int wizParControlWidth() const { return m_controlWidth; }
    void SetwizParControlWidth(int width);
    int wizParamWidth() const { return m_paramWidth; }
    void SetwizParamWidth(int width);

    TBEinput *BEinput1 = nullptr;
    TBEinput *BEinput2 = nullptr;
    TBEinput *BEinput3 = nullptr;
    TBEinput *BEinput4 = nullptr;
    TBEinput *BEinput5 = nullptr;
    TBEinput *BEinput7 = nullptr;
    QLabel *ImgArrow = nullptr;
    QLabel *LblEingangFrg = nullptr;
    /// The six inputs, top to bottom.
    QList<TBEinput *> Inputs() const;

    /// Lays the inputs out under the enable line, one row each, source fields in one
    /// column.
    void FrameResize();
    /// Captions from the language file (section "TSystemBEsFrame").
    Q_INVOKABLE void UpdateLanguage();
    void Loaded() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    int rowHeight() const;

    std::unique_ptr<Ui::TSystemBEsFrame> m_ui;
    QPointer<TParaTable> m_table;
    QString m_tableName;
    int m_controlLeft = 190;
    int m_controlWidth = 110;
    int m_paramWidth = 0;
    bool m_laying = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_SYSTEMBES_H
