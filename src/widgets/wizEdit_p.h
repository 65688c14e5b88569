#ifndef DRIVEWIZ_WIDGETS_WIZEDIT_P_H
#define DRIVEWIZ_WIDGETS_WIZEDIT_P_H

#include <QRadioButton>

namespace drivewiz {

class TMyRadioGroup;

/// A radio button of a TMyRadioGroup: reports its key events to the group before it
/// handles them.
class TGroupButton : public QRadioButton
{
    Q_OBJECT

public:
    TGroupButton(const QString &text, TMyRadioGroup *group);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    TMyRadioGroup *group() const;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_WIZEDIT_P_H
