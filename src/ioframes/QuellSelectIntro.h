#ifndef DRIVEWIZ_IOFRAMES_QUELLSELECTINTRO_H
#define DRIVEWIZ_IOFRAMES_QUELLSELECTINTRO_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QFrame>

#include <memory>

class QLabel;

namespace Ui {
class TQuellSelektorIntro;
}

namespace drivewiz {

class TParaTable;

/// The introduction above a page of signal sources: one word-wrapped text, Label1.
class DRIVEWIZ_EXPORT TQuellSelektorIntro : public QFrame, public Component
{
    Q_OBJECT

public:
    explicit TQuellSelektorIntro(QWidget *parent = nullptr);
    ~TQuellSelektorIntro() override;

    QLabel *Label1 = nullptr;

    /// The text from the table's language file (section "TQuellSelektorIntro", key
    /// "cLabel1"); kept without a table or file.
    void UpdateLanguage(TParaTable *table);
    /// As UpdateLanguage(table) with the form's parameter table.
    Q_INVOKABLE void UpdateLanguage();
    void Loaded() override;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    std::unique_ptr<Ui::TQuellSelektorIntro> m_ui;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_QUELLSELECTINTRO_H
