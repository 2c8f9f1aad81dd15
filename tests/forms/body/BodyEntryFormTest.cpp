#include <QLineEdit>
#include <QTest>
#include <cmath>
#include <functional>

#include "AgeForm.h"
#include "Body.h"
#include "BodyParametersForm.h"
#include "BodyTestSupport.h"
#include "Converter.h"
#include "Clock.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
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
    BodyEntryForm* Open(int kind, int mode) {
        if (kind == 0) {
            auto* form = new BodyParametersForm;
            form->Initialize(mode);
            return Push(form);
        }
        if (kind == 1) {
            auto* form = new WheightEnterForm;
            form->Initialize(mode);
            return Push(form);
        }
        auto* form = new AgeForm;
        form->Initialize();
        return Push(form);
    }
    // Today's logged value; -99 when today has no row.
    static double TodayLog(double DAOBodyLog::*field) {
        const auto logs = PedometerDBManager::GetInstance().GetBodyLogs();
        if (logs.empty() || logs.back().logDate.date() != Clock::Now().date()) return -99.0;
        return logs.back().*field;
    }
    static DAOTarget StoredGoals() {
        DAOTarget goals;
        PedometerDBManager::GetInstance().LoadTargets(goals);
        return goals;
    }
};

TEST_F(BodyEntryFormTest, SavingStoresTheEnteredValueMetricWhereItBelongsAndCloses) {
    const Body& body = Body::GetInstance();
    const struct {
        const char* name;
        int kind;  // 0 sizes, 1 weight, 2 age
        int mode;
        bool imperial;
        QStringList typed;
        std::function<double()> stored;
        double expected;
    } cases[] = {
        {"chest metric", 0, 0, false, {"90", "5"}, [] { return TodayLog(&DAOBodyLog::chest); }, 90.5},
        {"chest inches", 0, 0, true, {"35", "4"}, [] { return TodayLog(&DAOBodyLog::chest); },
         Converter::InchToCm(35.4)},
        {"waist", 0, 1, false, {"80", "0"}, [] { return TodayLog(&DAOBodyLog::waist); }, 80.0},
        {"hips", 0, 2, false, {"101", "2"}, [] { return TodayLog(&DAOBodyLog::hip); }, 101.2},
        {"walk step", 0, 4, false, {"72", "0"}, [&] { return body.storedWalkStepSize(); }, 0.72},
        {"jog step", 0, 5, false, {"95", "0"}, [&] { return body.storedJogStepSize(); }, 0.95},
        {"run step inches", 0, 6, true, {"50", "0"}, [&] { return body.storedRunStepSize(); }, 1.27},
        {"desired chest", 0, 7, false, {"96", "0"}, [] { return StoredGoals().chest; }, 96.0},
        {"desired waist", 0, 8, false, {"79", "5"}, [] { return StoredGoals().waist; }, 79.5},
        {"desired hips", 0, 9, false, {"98", "0"}, [] { return StoredGoals().hips; }, 98.0},
        {"mode 3 saves nothing", 0, 3, false, {"50", "0"}, [] { return TodayLog(&DAOBodyLog::chest); }, -99},
        {"weight 72 and 5", 1, 3, false, {"72", "5"}, [] { return TodayLog(&DAOBodyLog::weight); }, 72.0051},
        {"weight 72 and 500", 1, 0, false, {"72", "500"}, [&] { return body.storedWeight(); }, 72.5001},
        {"weight in pounds", 1, 0, true, {"160", "5"}, [] { return TodayLog(&DAOBodyLog::weight); },
         Converter::PndToKg(160.5)},
        {"desired weight", 1, 1000, false, {"70", ""}, [] { return StoredGoals().wheight; }, 70.0001},
        {"age", 2, 0, false, {"41"}, [&] { return double(body.storedAge()); }, 41},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        // Each case on a day of its own, which has no log row yet.
        VirtualTime::AdvanceTo(Clock::Now().addDays(1).toMSecsSinceEpoch());
        PedometerOptions::GetInstance().measurementSystem = c.imperial;
        BodyEntryForm* form = Open(c.kind, c.mode);
        Type(*form, c.typed);
        // Enter in a field saves and closes, as Save does.
        QTest::keyClick(form->GetFields().back(), Qt::Key_Return);
        EXPECT_NEAR(c.stored(), c.expected, 1e-9);
        EXPECT_EQ(navigation->GetTopForm(), root);
        QCoreApplication::processEvents();
    }
    // The weight went into the profile too; only the measurements made log rows.
    EXPECT_NEAR(body.storedWeight(), Converter::PndToKg(160.5), 1e-9);
    EXPECT_EQ(PedometerDBManager::GetInstance().GetBodyLogs().size(), 7u);
}

// Every name the other screens open leads to the right form and mode, which opens on
// the value in use (or a typical one) in the user's units.
TEST_F(BodyEntryFormTest, NamedScreensOpenTheirModeOnTheValueInUse) {
    AddLog(3, 81.25, 0, 0, 0);
    DAOTarget::GetInstance().hips = 99.0;
    const struct {
        const char* name;
        int mode;
        bool imperial;
        QStringList shown;
    } cases[] = {
        {"body-chest", 0, false, {"95", "0"}},    {"body-chest", 0, true, {"37", "4"}},
        {"body-waist", 1, false, {"85", "0"}},    {"body-hips", 2, false, {"100", "0"}},
        {"body-step-walk", 4, false, {"71", "0"}}, {"body-step-jog", 5, false, {"106", "6"}},
        {"body-step-run", 6, false, {"142", "1"}}, {"body-goal-chest", 7, false, {"95", "0"}},
        {"body-goal-waist", 8, false, {"85", "0"}}, {"body-goal-hips", 9, true, {"39", "0"}},
        {"body-weight", 0, false, {"81", "250"}}, {"body-weight", 0, true, {"179", "1"}},
        {"body-goal-weight", 1000, false, {"81", "250"}}, {"age", -1, false, {"30"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name) + (c.imperial ? " imperial" : ""));
        PedometerOptions::GetInstance().measurementSystem = c.imperial;
        auto* form = qobject_cast<BodyEntryForm*>(
            ScreenDirectory::Open(QString::fromLatin1(c.name), *navigation));
        ASSERT_NE(form, nullptr);
        if (auto* sizes = qobject_cast<BodyParametersForm*>(form)) {
            EXPECT_EQ(sizes->GetMode(), c.mode);
        }
        if (auto* weight = qobject_cast<WheightEnterForm*>(form)) {
            EXPECT_EQ(weight->GetMode(), c.mode);
        }
        QStringList shown;
        for (const auto& field : form->GetFields()) shown << field->text();
        EXPECT_EQ(shown, c.shown);
        navigation->PopForm();
        QCoreApplication::processEvents();
    }
}

// Every entry screen refuses what it cannot store, keeps the typed text and says why;
// a valid value is stored and closes the screen. Metric, English texts.
TEST_F(BodyEntryFormTest, EachFieldRefusesWhatItCannotStoreAndSaysWhy) {
    const Body& body = Body::GetInstance();
    const struct Field {
        const char* name;
        std::function<BodyEntryForm*()> open;
        std::function<double()> stored;
    } fields[] = {
        {"age", [&] { return Open(2, 0); }, [&] { return double(body.storedAge()); }},
        {"height", [&] { auto* f = new SettingsHeight; f->Initialize(); return Push(f); },
         [&] { return body.storedHeight(); }},
        {"weight", [&] { return Open(1, 0); }, [&] { return body.storedWeight(); }},
        {"waist", [&] { return Open(0, 1); }, [] { return TodayLog(&DAOBodyLog::waist); }},
        {"walk step", [&] { return Open(0, 4); }, [&] { return body.storedWalkStepSize(); }},
        {"desired hips", [&] { return Open(0, 9); }, [] { return StoredGoals().hips; }},
    };
    constexpr double kKept = -1.0;  // the stored value stays what it was
    const struct {
        int field;
        QStringList typed;
        double stored;
        const char* message;
    } cases[] = {
        {0, {"4"}, kKept, "Too small: at least 5 years."},
        {0, {"121"}, kKept, "Too large: at most 120 years."},
        {0, {"4o"}, kKept, "Not a number: please use digits only."},
        {0, {""}, kKept, "Please enter a number."},
        {0, {"120"}, 120, "From 5 to 120 years"},
        {1, {"49"}, kKept, "Too small: at least 50 cm."},
        {1, {"251"}, kKept, "Too large: at most 250 cm."},
        {1, {"50"}, 50, "From 50 to 250 cm"},
        {2, {"19", "999"}, kKept, "Too small: at least 20 kg."},
        {2, {"400", "001"}, kKept, "Too large: at most 400 kg."},
        {2, {"82", "-5"}, kKept, "Not a number: please use digits only."},
        {2, {"", ""}, kKept, "Please enter a number."},
        {2, {"82", "5"}, 82.0051, "From 20 to 400 kg"},
        {3, {"0", "0"}, kKept, "Too small: at least 30 cm."},
        {3, {"999", "5"}, kKept, "Too large: at most 250 cm."},
        {3, {"250", "0"}, 250, "From 30 to 250 cm"},
        {4, {"29", "9"}, kKept, "Too small: at least 30 cm."},
        {4, {"999", "9"}, kKept, "Too large: at most 250 cm."},
        {4, {"72", "x"}, kKept, "Not a number: please use digits only."},
        {4, {"30", ""}, 0.3, "From 30 to 250 cm"},
        {5, {"99", "5"}, 99.5, "From 30 to 250 cm"},
    };
    for (const auto& c : cases) {
        const Field& field = fields[c.field];
        SCOPED_TRACE(std::string(field.name) + " " + c.typed.join('|').toStdString());
        VirtualTime::AdvanceTo(Clock::Now().addDays(1).toMSecsSinceEpoch());
        const double before = field.stored();
        BodyEntryForm* form = field.open();
        Type(*form, c.typed);
        form->OnActionPerformed(*form, BodyEntryForm::ID_SAVE);
        EXPECT_NEAR(field.stored(), c.stored == kKept ? before : c.stored, 1e-9);
        EXPECT_EQ(form->GetMessage(), QString::fromUtf8(c.message));
        const bool saved = c.stored != kKept;
        EXPECT_EQ(navigation->GetTopForm(), saved ? root : form);
        if (!saved) {
            QStringList shown;
            for (const auto& f : form->GetFields()) shown << f->text();
            EXPECT_EQ(shown, c.typed);  // nothing typed was changed
            QTest::keyClick(form->GetFields().front(), Qt::Key_Escape);  // leaves unsaved
            EXPECT_EQ(navigation->GetTopForm(), root);
            EXPECT_NEAR(field.stored(), before, 1e-9);
        }
        QCoreApplication::processEvents();
    }
}

}  // namespace
