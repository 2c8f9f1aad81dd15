#pragma once

// A shown frame on the large layout with a navigation controller and a root screen, as
// the application sets them up, for tests of the screens pushed over the root.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>
#include <memory>

#include "AppFrame.h"
#include "PedometerForm.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

class ScreenFrame {
public:
    ScreenFrame() = default;
    ~ScreenFrame() { Close(); }

    // Makes the frame and its controller; SetRoot does it too if needed.
    void Open() {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        frame = std::make_unique<AppFrame>();
        navigation = std::make_unique<TivNavigationController>(*frame);
    }
    // Makes `form` the root screen and shows the frame. A root that refers to the frame is
    // made after Open().
    PedometerForm* SetRoot() { return SetRoot(new PedometerForm); }
    template <class Form>
    Form* SetRoot(Form* form) {
        if (!frame) Open();
        navigation->InitWithRootForm(form);
        frame->AddControl(*form);
        frame->SetCurrentForm(*form);
        frame->show();
        root = form;
        return form;
    }
    template <class Form>
    Form* Push(Form* form) {
        navigation->PushForm(form);
        return form;
    }
    // Closes the screens, newest first, then the frame.
    void Close() {
        navigation.reset();
        frame.reset();
        QCoreApplication::processEvents();
    }

    // A tap in the middle of the widget, with real mouse events, and what it posted.
    static void Click(QWidget* widget) {
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
        QCoreApplication::processEvents();
    }

    std::unique_ptr<AppFrame> frame;
    std::unique_ptr<TivNavigationController> navigation;
    PedometerForm* root = nullptr;
};
