#pragma once

#include "PedometerForm.h"

class PedArticleArea;
class QScrollArea;

// Tips on losing weight: a plain-text article in the user's language, laid out with a
// title and headings (PedArticleArea) and scrolled under the title on the app's
// background, with a Back key. The file is the resource named by the text
// "more__ loosing_weight_tips" plus ".html" (plain text despite the name: no markup is
// read). A missing or unreadable file shows an empty article. Opened from the main
// screen's option menu ("tips-weight").
class WheightTips : public PedometerForm {
    Q_OBJECT
public:
    explicit WheightTips(QWidget* parent = nullptr);

    // Names the screen. Always true.
    bool Initialize();
    void OnInitializing() override;

    // The article's file for the current language.
    static QString ArticlePath();
    PedArticleArea* GetArticle() const { return article_; }
    QScrollArea* GetScrollArea() const { return scroll_; }

private:
    QScrollArea* scroll_ = nullptr;
    PedArticleArea* article_ = nullptr;
};
