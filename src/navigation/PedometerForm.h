#pragma once

#include <QPixmap>
#include <QPointer>
#include <memory>

#include "IActionEventListener.h"
#include "IFormBackEventListener.h"
#include "IKeyEventListener.h"
#include "TivForm.h"

class FormHeader;
#include <QMenu>
class QPainter;

// The base of the application's screens: a background picture, a title with optional
// tabs, the option menu, the back soft key and the volume side keys.
//
// Action id 1 is the back soft key on every screen: OnActionPerformed(…, 1) asks
// OnFormBackRequested, which plays the click and pops this screen, or, while a child
// with the property "closesOnBack" (a confirmation) shows, hides that child only. The phone's back
// key (Escape) reaches OnFormBackRequested directly once ShowBackButton has run.
// Screens override OnActionPerformed for their own ids and pass the rest on here.
//
// The side keys (on every screen, the form listens to itself) step the sound volume;
// a long press turns sound fully on or off.
//
// Option menu: InitOptionMenu(id) makes the menu and shows the option key in the
// frame's bar; the key reports `id` to OnActionPerformed, where the screen plays the
// click and calls ShowOptionMenu(). Each item reports its own id there. The option
// menu operations do nothing (with a warning) before InitOptionMenu.
//
// Title and tabs sit in a header at the top; GetClientTop() is where the screen's own
// content can start. A tab tap reports the tab's action id to OnActionPerformed.
class PedometerForm : public TivForm,
                      public IKeyEventListener,
                      public IActionEventListener,
                      public IFormBackEventListener {
    Q_OBJECT
public:
    static constexpr int BACK_ACTION_ID = 1;

    explicit PedometerForm(QWidget* parent = nullptr);
    ~PedometerForm() override;

    // The named picture (TivUtils) becomes the background, drawn to fill the screen.
    void SetBackgroundImage(const QString& name);
    // The background at the layout's scale, as drawn for the reference layout; null
    // without one or when its artwork is missing.
    const QPixmap* GetBackgroundImage() const;
    QString GetBackgroundName() const { return backgroundName_; }

    void InitOptionMenu(int actionId);
    // Gives a menu the option menu's look: dark, light text, finger-sized rows. Every
    // pop-up menu of the screens uses it.
    static void StyleMenu(QMenu& menu);
    void AddOptionKey(const QString& text, int actionId);
    void ShowOptionMenu();
    void HideOptionMenu();
    QMenu* GetOptionMenu() const { return optionMenu_; }

    void SetTitleText(const QString& title);
    void AddTabItem(const QString& text, int actionId);
    void SetSelectedTabIndex(int index);
    int GetSelectedTabIndex() const;
    FormHeader* GetHeader() const { return header_; }
    // The y below the title and tabs (0 without them).
    int GetClientTop() const;
    // Makes everything below the title and tabs the grow band (TivForm::SetGrowBand): for
    // screens that are one list or one article.
    void SetGrowBandBelowHeader();

    // Right soft key: "Back", action id 1; the phone's back key is accepted too.
    virtual void ShowBackButton();

    void OnActionPerformed(const QWidget& source, int actionId) override;
    void OnKeyPressed(const QWidget& source, KeyCode keyCode) override;
    void OnKeyReleased(const QWidget& source, KeyCode keyCode) override;
    void OnKeyLongPressed(const QWidget& source, KeyCode keyCode) override;
    void OnFormBackRequested(TivForm& source) override;

protected:
    // Draws the background picture; screens that draw more call this first. Always true.
    virtual bool OnDraw(QPainter& painter);
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    FormHeader& Header();
    void PlaceHeader();

    QString backgroundName_;
    mutable std::unique_ptr<QPixmap> background_;
    mutable double backgroundScale_ = 0;
    QPointer<QMenu> optionMenu_;
    FormHeader* header_ = nullptr;
};
