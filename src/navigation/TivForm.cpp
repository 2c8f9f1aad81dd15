#include "TivForm.h"

TivForm::TivForm(QWidget* parent) : QWidget(parent) {}

TivForm::~TivForm() = default;

void TivForm::SetSoftkeyText(Softkey key, const QString& text) {
    softkeys_[key].text = text;
    Q_EMIT SoftkeysChanged();
}

void TivForm::AddOptionkeyActionListener(IActionEventListener* listener) {
    optionkeyListener_.Set(listener);
    Q_EMIT SoftkeysChanged();
}

void TivForm::AddKeyEventListener(IKeyEventListener& listener) {
    for (const auto& known : keyListeners_) {
        if (known.Address() == &listener && !known.IsGone()) return;
    }
    keyListeners_.append(DelegatePointer<IKeyEventListener>(&listener));
}

void TivForm::RemoveKeyEventListener(IKeyEventListener& listener) {
    keyListeners_.removeIf([&listener](const DelegatePointer<IKeyEventListener>& known) {
        return known.Address() == &listener || known.IsGone();
    });
}

QVector<IKeyEventListener*> TivForm::GetKeyEventListeners() const {
    QVector<IKeyEventListener*> live;
    for (const auto& known : keyListeners_) {
        if (IKeyEventListener* listener = known.Get()) live.append(listener);
    }
    return live;
}
