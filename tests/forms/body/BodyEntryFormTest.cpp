#include <QLineEdit>
#include <QTest>
#include <cmath>
#include <map>

#include "AgeForm.h"
#include "Body.h"
#include "BodyParametersForm.h"
#include "BodyTestSupport.h"
#include "Converter.h"
#include "Clock.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "TestData.h"
#include "SettingsHeight.h"
#include "VirtualTime.h"
#include "WheightEnterForm.h"

namespace {

class BodyEntryFormTest : public BodyScreenTest {
protected:
    // Puts each text into its field as typed (a "not a number" text gets past the
    // digits-only keyboard only this way, as from an input method).
    static void Type(BodyEntryForm& form, const QStringList& texts) {
        ASSERT_EQ(form.GetFields().size(), texts.size());
        for (int i = 0; i < texts.size(); ++i) form.GetFields()[i]->setText(texts[i]);
    }
    // Screen 0 the sizes, 1 the weight, 2 the age, 3 the height.
    BodyEntryForm* Open(int screen, int mode) {
        if (screen == 0) return Push(Initialized(new BodyParametersForm, mode));
        if (screen == 1) return Push(Initialized(new WheightEnterForm, mode));
        if (screen == 2) return Push(Initialized(new AgeForm));
        return Push(Initialized(new SettingsHeight));
    }
    template <class Form, class... Mode>
    static Form* Initialized(Form* form, Mode... mode) {
        form->Initialize(mode...);
        return form;
    }
    // Today's logged value; -99 when today has no row.
    static double TodayLog(double DAOBodyLog::*field) {
        const auto logs = PedometerDBManager::GetInstance().GetBodyLogs();
        if (logs.empty() || logs.back().logDate.date() != Clock::Now().date()) return -99.0;
        return logs.back().*field;
    }
    // The stored value a table names, metric.
    static double Stored(const QByteArray& where) {
        const Body& body = Body::GetInstance();
        DAOTarget goals;
        PedometerDBManager::GetInstance().LoadTargets(goals);
        const std::map<QByteArray, double> values = {
            {"chest", TodayLog(&DAOBodyLog::chest)}, {"waist", TodayLog(&DAOBodyLog::waist)},
            {"hips", TodayLog(&DAOBodyLog::hip)}, {"weight", TodayLog(&DAOBodyLog::weight)},
            {"walk step", body.storedWalkStepSize()}, {"jog step", body.storedJogStepSize()},
            {"run step", body.storedRunStepSize()}, {"profile weight", body.storedWeight()},
            {"age", double(body.storedAge())}, {"height", body.storedHeight()},
            {"desired chest", goals.chest}, {"desired waist", goals.waist},
            {"desired hips", goals.hips}, {"desired weight", goals.wheight}};
        return values.at(where);
    }
    static QStringList Split(const QByteArray& cell) { return QString::fromUtf8(cell).split('|'); }
    static QStringList Shown(const BodyEntryForm& form) {
        QStringList shown;
        for (const auto& field : form.GetFields()) shown << field->text();
        return shown;
    }
};

TEST_F(BodyEntryFormTest, SavingStoresTheEnteredValueMetricWhereItBelongsAndCloses) {
    for (const QByteArrayList& c : testdata::Table("body-entry-saves.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        // Each case on a day of its own, which has no log row yet.
        VirtualTime::AdvanceTo(Clock::Now().addDays(1).toMSecsSinceEpoch());
        PedometerOptions::GetInstance().measurementSystem = c[2] == "1";
        BodyEntryForm* form = Open(c[0].toInt(), c[1].toInt());
        Type(*form, Split(c[3]));
        // Enter in a field saves and closes, as Save does.
        QTest::keyClick(form->GetFields().back(), Qt::Key_Return);
        EXPECT_NEAR(Stored(c[4]), c[5].toDouble(), 1e-9);
        EXPECT_EQ(navigation->GetTopForm(), root);
        QCoreApplication::processEvents();
    }
    // The weight went into the profile too; only the measurements made log rows.
    EXPECT_NEAR(Body::GetInstance().storedWeight(), Converter::PndToKg(160.5), 1e-9);
    EXPECT_EQ(PedometerDBManager::GetInstance().GetBodyLogs().size(), 7u);
}

// Every name the other screens open leads to the right form and mode, which opens on
// the value in use (or a typical one) in the user's units.
TEST_F(BodyEntryFormTest, NamedScreensOpenTheirModeOnTheValueInUse) {
    AddLog(3, 81.25, 0, 0, 0);
    DAOTarget::GetInstance().hips = 99.0;
    for (const QByteArrayList& c : testdata::Table("body-entry-opening.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        PedometerOptions::GetInstance().measurementSystem = c[2] == "1";
        auto* form = qobject_cast<BodyEntryForm*>(
            ScreenDirectory::Open(QString::fromLatin1(c[0]), *navigation));
        ASSERT_NE(form, nullptr);
        if (auto* sizes = qobject_cast<BodyParametersForm*>(form)) {
            EXPECT_EQ(sizes->GetMode(), c[1].toInt());
        }
        if (auto* weight = qobject_cast<WheightEnterForm*>(form)) {
            EXPECT_EQ(weight->GetMode(), c[1].toInt());
        }
        EXPECT_EQ(Shown(*form), Split(c[3]));
        navigation->PopForm();
        QCoreApplication::processEvents();
    }
}

// Every entry screen refuses what it cannot store, keeps the typed text and says why;
// a valid value is stored and closes the screen. Metric, English texts.
TEST_F(BodyEntryFormTest, EachFieldRefusesWhatItCannotStoreAndSaysWhy) {
    for (const QByteArrayList& c : testdata::Table("body-entry-refusals.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        VirtualTime::AdvanceTo(Clock::Now().addDays(1).toMSecsSinceEpoch());
        const double before = Stored(c[2]);
        BodyEntryForm* form = Open(c[0].toInt(), c[1].toInt());
        Type(*form, Split(c[3]));
        form->OnActionPerformed(*form, BodyEntryForm::ID_SAVE);
        const bool saved = c[4] != "kept";
        EXPECT_NEAR(Stored(c[2]), saved ? c[4].toDouble() : before, 1e-9);
        EXPECT_EQ(form->GetMessage(), QString::fromUtf8(c[5]));
        EXPECT_EQ(navigation->GetTopForm(), saved ? root : form);
        if (!saved) {
            EXPECT_EQ(Shown(*form), Split(c[3]));  // nothing typed was changed
            QTest::keyClick(form->GetFields().front(), Qt::Key_Escape);  // leaves unsaved
            EXPECT_EQ(navigation->GetTopForm(), root);
            EXPECT_NEAR(Stored(c[2]), before, 1e-9);
        }
        QCoreApplication::processEvents();
    }
}

}  // namespace
