#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

class TivForm;

// The frame's bottom bar: the current form's left soft key, its option key (three
// dots, in the middle) and its right soft key ("Back" on most screens).
//
// The bar only shows the keys and reports taps: a key fires when the finger is lifted
// over the key it went down on. The frame turns that into the form's action.
class SoftkeyBar : public QWidget {
    Q_OBJECT
public:
    enum class Key { None, Left, Option, Right };

    explicit SoftkeyBar(QWidget* parent = nullptr);

    // 60 pixels in the 480-wide layout, scaled with it.
    static int BarHeight();

    // Shows the keys of `form` (none for null) and follows its later changes.
    void ShowForm(TivForm* form);
    // Whether the key is shown now, and where (for taps and tests).
    bool IsKeyShown(Key key) const;
    QRect KeyRect(Key key) const;
    QString KeyText(Key key) const;

Q_SIGNALS:
    void SoftkeyActivated(int softkey);  // TivForm::SOFTKEY_0 or SOFTKEY_1
    void OptionkeyActivated();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Key KeyAt(const QPoint& point) const;
    void Refresh();

    QPointer<TivForm> form_;
    Key pressed_ = Key::None;
    bool pressedInside_ = false;
};
