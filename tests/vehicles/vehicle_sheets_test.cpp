// The vehicle sheets printed from the vehicle form: the current vehicle, every vehicle from the
// current one on, and the vehicles whose technical inspection is due.
#include <deque>

#include "forms/grid.h"
#include "print/pageform.h"
#include "vb/constants.h"
#include "vehicles/vehiclesheets.h"
#include "vehicles_support.h"

using namespace vehicles_test;
using vehicles::GKTorzsFormX;

namespace {

class VehicleSheetsTest : public VehicleTest {
protected:
    void SetUp() override {
        VehicleTest::SetUp();
        // every sheet shown is recorded, then left by the next button of the queue ("Tovább" by default)
        forms::setModalRunner([this](forms::Form& f) {
            auto* sheet = dynamic_cast<print::SheetPageForm*>(&f);
            if (!sheet) return;
            caption = sheet->windowTitle().toStdString();
            title = sheet->Cim->text().toStdString();
            sheets.push_back(sheet->lines());
            std::string next = "Command1";
            if (!buttons.empty()) {
                next = buttons.front();
                buttons.pop_front();
            }
            click(*sheet, next);
        });
    }

    std::vector<std::string> plates() const {
        std::vector<std::string> out;
        for (auto& s : sheets) out.push_back(s.at(0));
        return out;
    }

    std::vector<std::vector<std::string>> sheets;
    std::deque<std::string> buttons;
    std::string caption, title;
};

TEST_F(VehicleSheetsTest, TheCurrentVehiclesSheetHasItsSixteenLinesAndTheIssueDate) {
    vehicle(1, "AAA-111", "Opel");
    vehicle(2, "KŐB-112", "Rába H18",
            {{"GkForgalombahelyezve", vb::DateSerial(2019, 3, 15)}, {"KilometerOraAllasa", 120500.0},
             {"Hengerurtartalom", 10350.0}, {"FogyasztásLiter100", 32.5}, {"GkVezetoNeve", "Győri Ödön"},
             {"UtolsoSzervizDatum", vb::DateSerial(2026, 5, 2)}, {"JelenlegiKmAllas", 185250.0},
             {"SzervizIntervallumNap", int32_t(180)}, {"SzervizIntervallumKM", 15000.0},
             {"MuszakiVizsgaDatum", vb::DateSerial(2027, 3, 31)}, {"ZoldkartyaDatum", vb::DateSerial(2027, 1, 5)},
             {"CascoHaviDija", 12500.5}, {"KotelezoHaviDija", 8400.0}, {"OnkoltsegKm", 212.75}});
    vehicle(3, "NUL-000", vb::Null{});
    auto& f = open();
    f.DBGrid1->selectRow(1);
    click(f, "Command6");
    f.DBGrid1->selectRow(2);
    click(f, "AktLapNyom");
    ASSERT_EQ(sheets.size(), 2u);
    EXPECT_EQ(sheets[0], (std::vector<std::string>{"Forgalmi rendszám: KŐB-112",
                                                   "Típus: Rába H18",
                                                   "Forgalomba helyezve: 2019.03.15.",
                                                   "Kilométeróra állása: 120500",
                                                   "Hengerűrtartalom: 10350",
                                                   "Fogyasztás (liter/100 km): 32,5",
                                                   "Járművezető neve: Győri Ödön",
                                                   "Utolsó szerviz dátuma: 2026.05.02.",
                                                   "Jelenlegi kilométeróra állás: 185250",
                                                   "Szervizintervallum (nap): 180",
                                                   "Szervizintervallum (km): 15000",
                                                   "Műszaki vizsga lejárat dátuma: 2027.03.31.",
                                                   "Zöld kártya lejárat (környezetvédelmi) dátuma: 2027.01.05.",
                                                   "CASCO havi díja: 12500,5",
                                                   "Kötelező biztosítás havi díja: 8400",
                                                   "Önköltség/kilométer: 212,75",
                                                   "Kiadva: 2026.11.23."}));
    // a vehicle without dates prints today in those lines, and nothing is written
    EXPECT_EQ(sheets[1][1] + "|" + sheets[1][2] + "|" + sheets[1][3] + "|" + sheets[1][12],
              "Típus: |Forgalomba helyezve: 2026.11.23.|Kilométeróra állása: 0|"
              "Zöld kártya lejárat (környezetvédelmi) dátuma: 2026.11.23.");
    EXPECT_EQ(col("GkForgalombahelyezve")[2] + col("ZoldkartyaDatum")[2], "");
    EXPECT_EQ(caption, "Gépjármű adatlap");
    EXPECT_EQ(title, "GÉPJÁRMŰ ADATLAP");
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

TEST_F(VehicleSheetsTest, FromTheCurrentVehicleOnUntilTheEndOrMegse) {
    for (int i = 1; i <= 4; ++i) vehicle(i, "ABC-00" + std::to_string(i), "Opel");
    auto& f = open();
    f.DBGrid1->selectRow(1);
    click(f, "Command7");
    EXPECT_EQ(plates(), (std::vector<std::string>{"Forgalmi rendszám: ABC-002", "Forgalmi rendszám: ABC-003",
                                                  "Forgalmi rendszám: ABC-004"}));
    EXPECT_EQ(t(f.Text1), "ABC-004");
    // "Mégse" on a sheet stops the loop
    sheets.clear();
    f.DBGrid1->selectRow(0);
    buttons = {"Command1", "Command3"};
    click(f, "AktLapTolMindNyom");
    EXPECT_EQ(sheets.size(), 2u);
    EXPECT_EQ(t(f.Text1), "ABC-004");
    EXPECT_TRUE(dialogs->log.empty());
}

TEST_F(VehicleSheetsTest, InspectionDueUsesTodayMinusTheDaysWithItsOwnSpelling) {
    Globals::WarnInspectionDays = 10;
    vehicle(1, "LIM-013", "Opel",
            {{"MuszakiVizsgaDatum", vb::DateSerial(2026, 11, 13)}, {"ZoldkartyaDatum", vb::DateSerial(2027, 2, 1)}});
    vehicle(2, "NEX-014", "Opel", {{"MuszakiVizsgaDatum", vb::DateSerial(2026, 11, 14)}});
    vehicle(3, "OLD-025", "Opel", {{"MuszakiVizsgaDatum", vb::DateSerial(2025, 1, 2)}});
    vehicle(4, "NUL-000", "Opel");
    vehicle(5, "TOD-023", "Opel", {{"MuszakiVizsgaDatum", today()}});
    EXPECT_EQ(vehicles::sheets::inspectionSource(vb::DateSerial(2026, 11, 3)),
              "select * from jarmuvek where MuszakiVizsgaDatum <= #11/3/2026#");
    auto& f = open();
    std::vector<std::string> sources;
    forms::setModalRunner([&](forms::Form& s) {
        auto& sheet = dynamic_cast<print::SheetPageForm&>(s);
        sources.push_back(f.JarmuvekData->RecordSource());
        sheets.push_back(sheet.lines());
        click(sheet, "Command1");
    });
    click(f, "Command8");
    EXPECT_EQ(plates(), (std::vector<std::string>{"Forgalmi rendszám: LIM-013", "Forgalmi rendszám: OLD-025"}));
    EXPECT_EQ(sources[0], "select * from jarmuvek where MuszakiVizsgaDatum <= #11/13/2026#");
    EXPECT_EQ(sheets[0][12], "Zöld kártya lajárat (környezetvédelmi) dátuma: 2027.02.01.");
    EXPECT_EQ(sheets[1][12], "Zöld kártya lajárat (környezetvédelmi) dátuma: 2026.11.23.");
    // the normal source and the whole grid come back
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 5);
    EXPECT_TRUE(dialogs->log.empty());

    // nothing due: the message without a beep, and the source back
    Globals::WarnInspectionDays = 1000;
    sheets.clear();
    click(f, "MuszakiKell");
    EXPECT_TRUE(sheets.empty());
    EXPECT_EQ(messages(), (std::vector<Message>{{"Nincs nyomtatandó adat!", 48, "FIGYELEM!"}}));
    EXPECT_EQ(dialogs->beeps(), 0);
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 5);
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

}  // namespace
