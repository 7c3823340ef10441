// Speed of the trip log on a large Utak: opening on the last row, "Új út" and "OK és Összesít".
// Runs only with KEROVA_BENCH_TRIPS=<rows> in the environment (the demo's trips grown in one batch).
#include <QElapsedTimer>
#include <QLineEdit>
#include <QThread>
#include <cstdio>
#include <cstdlib>

#include "app/app.h"
#include "company/demo.h"
#include "forms/globals.h"
#include "trips/tripform.h"
#include "trips_support.h"
#include "vb/constants.h"

using namespace trips_test;
using trips::UtNyilvantartasFormX;

namespace {

class TripSpeedTest : public TripsTest {};

TEST_F(TripSpeedTest, OpenNewTripAndComputeOnALargeTable) {
    const char* env = std::getenv("KEROVA_BENCH_TRIPS");
    if (!env) GTEST_SKIP() << "set KEROVA_BENCH_TRIPS=<rows>";
    app::registerAllForms();
    demoCompany();
    company::growTrips(dir.path() / "Kerova.dsb", std::atoi(env));
    db::closeAll();
    QElapsedTimer t;
    t.start();
    forms::get(UtNyilvantartasFormX::Name).Show();
    auto& f = static_cast<UtNyilvantartasFormX&>(form(UtNyilvantartasFormX::Name));
    QCoreApplication::processEvents();
    qint64 open = t.restart();

    f.UjUt_Click();
    QCoreApplication::processEvents();
    qint64 newTrip = t.restart();
    f.Text6->setText("120");
    f.MaskEdBox1->setText("8,05");
    f.MaskEdBox2->setText("10,00");
    f.Command2_Click();
    QCoreApplication::processEvents();
    qint64 compute = t.restart();
    f.DBGrid1_RowColChange();
    qint64 recount = t.restart();
    std::printf("| %zu trips | open %lld ms | Új út %lld ms | OK és Összesít %lld ms | row change %lld ms |\n",
                f.UtakData->rs().size() ? size_t(std::atoi(env)) : 0, open, newTrip, compute, recount);
    dialogs->answers = {vb::vbNo};
    f.Kilepes_Click();
}

}  // namespace

namespace {

// A look at the log on the demo company: KEROVA_TRIP_SHOT=<png> (run it on a display).
TEST_F(TripSpeedTest, Screenshot) {
    const char* path = std::getenv("KEROVA_TRIP_SHOT");
    if (!path) GTEST_SKIP() << "set KEROVA_TRIP_SHOT=<png>";
    app::registerAllForms();
    demoCompany();
    forms::get(UtNyilvantartasFormX::Name).Show();
    auto& f = static_cast<UtNyilvantartasFormX&>(form(UtNyilvantartasFormX::Name));
    f.UjUt_Click();
    f.Text6->setText("121");
    f.MaskEdBox1->setText("8,05");
    f.MaskEdBox2->setText("10,00");
    f.Text17->setText("612,5");
    f.Command2_Click();
    f.showMaximized();
    for (int i = 0; i < 30; ++i) {
        QCoreApplication::processEvents();
        QThread::msleep(50);
    }
    f.grab().save(path);
    if (const char* wait = std::getenv("KEROVA_TRIP_SHOT_WAIT")) QThread::sleep(std::atoi(wait));
    // the printed sheet of the group, as its preview shows it
    std::string printPath = std::string(path) + ".print.png";
    forms::setModalRunner([printPath](forms::Form& g) {
        g.resize(900, 1000);
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
        g.grab().save(QString::fromStdString(printPath));
        g.Unload();
    });
    Globals::OperatorName = "Kerova Fuvarozó Kft.";
    f.Nyomtatas_Click();
    dialogs->answers = {vb::vbNo};
    f.Kilepes_Click();
}

}  // namespace
