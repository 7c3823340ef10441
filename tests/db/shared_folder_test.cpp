// Two copies of the program on one folder: a forked process holds record locks and writes while
// this one works on the same file. Only the record locks of Edit stand between them; the other
// copy's committed rows show at the next Requery; nothing is lost.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "db_support.h"

using namespace dbtest;
using db::Database;
using vb::Variant;

namespace {

// The other copy: a child process driven by lines ("edit N", "update TEXT", "add COUNT FIRST",
// "quit"), answering "ok" or "err NUMBER" for each.
class Peer {
public:
    explicit Peer(const std::filesystem::path& folder) {
        int down[2], up[2];
        ::signal(SIGPIPE, SIG_IGN);  // a peer that died must fail the test, not kill it
        if (::pipe(down) != 0 || ::pipe(up) != 0) throw std::runtime_error("pipe");
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(down[1]);
            ::close(up[0]);
            serve(folder, down[0], up[1]);
            ::_exit(0);
        }
        ::close(down[0]);
        ::close(up[1]);
        to_ = down[1];
        from_ = up[0];
    }
    ~Peer() {
        if (pid_ > 0) {
            if (!quit_) send("quit");
            ::close(to_);
            ::close(from_);
            int status = 0;
            ::waitpid(pid_, &status, 0);
        }
    }
    void send(const std::string& line) {
        quit_ = quit_ || line == "quit";
        std::string l = line + "\n";
        (void)!::write(to_, l.data(), l.size());
    }
    std::string receive() { return readLine(from_); }
    std::string ask(const std::string& line) {
        send(line);
        return receive();
    }

private:
    static std::string readLine(int fd) {
        std::string s;
        char c;
        while (::read(fd, &c, 1) == 1 && c != '\n') s += c;
        return s;
    }

    static void serve(const std::filesystem::path& folder, int in, int out) {
        db::setWorkingFolder(folder);
        std::unique_ptr<db::Recordset> editing;
        for (;;) {
            std::string line = readLine(in);
            std::string answer = "ok";
            size_t sp = line.find(' ');
            std::string cmd = line.substr(0, sp), arg = sp == std::string::npos ? "" : line.substr(sp + 1);
            try {
                if (cmd == "edit") {
                    editing = Database::open("Kerova.dsb")->OpenRecordset("select * from Jarmuvek where recordID = " + arg);
                    editing->Edit();
                } else if (cmd == "update") {
                    editing->set("Típus", arg);
                    editing->Update();
                } else if (cmd == "add") {
                    int n = std::stoi(arg), first = std::stoi(arg.substr(arg.find(' ') + 1));
                    auto rs = Database::open("Kerova.dsb")->OpenRecordset("Jarmuvek");
                    for (int i = 0; i < n; ++i) addVehicle(*rs, first + i, "P-" + std::to_string(first + i), "", 0);
                } else if (cmd == "quit" || cmd.empty()) {
                    editing.reset();
                    db::closeAll();
                    std::string ok = "ok\n";
                    (void)!::write(out, ok.data(), ok.size());
                    return;
                }
            } catch (const vb::NumberedError& e) {
                answer = "err " + std::to_string(e.number());
            } catch (const std::exception& e) {
                answer = std::string("exception ") + e.what();
            }
            answer += "\n";
            (void)!::write(out, answer.data(), answer.size());
        }
    }

    pid_t pid_ = -1;
    bool quit_ = false;
    int to_ = -1, from_ = -1;
};

class SharedFolderTest : public ::testing::Test {
protected:
    testsupport::TempDir dir;
    std::unique_ptr<Peer> peer;

    void SetUp() override {
        createFile(dir.path(), "Kerova.dsb", {vehicles()});
        db::setWorkingFolder(dir.path());
        {
            auto rs = Database::open("Kerova.dsb")->OpenRecordset("Jarmuvek");
            addVehicle(*rs, 1, "ABC-123", "eredeti", 0);
            addVehicle(*rs, 2, "KŐB-456", "eredeti", 0);
            addVehicle(*rs, 3, "GYŐ-789", "eredeti", 0);
        }
        db::closeAll();  // the child starts with no file of ours open
        peer = std::make_unique<Peer>(dir.path());
    }
    void TearDown() override {
        peer.reset();
        db::closeAll();
    }

    std::unique_ptr<db::Recordset> vehiclesById() {
        return Database::open("Kerova.dsb")->OpenRecordset("select * from Jarmuvek order by recordID");
    }
};

TEST_F(SharedFolderTest, ARecordInTheOtherCopysEditIsLockedUntilItsUpdate) {
    ASSERT_EQ(peer->ask("edit 1"), "ok");
    auto rs = vehiclesById();
    EXPECT_EQ(errorOf([&] { rs->Edit(); }), 3260);
    EXPECT_FALSE(rs->editing());
    rs->MoveNext();  // another record is free
    rs->Edit();
    rs->set("Típus", "itt");
    rs->Update();

    ASSERT_EQ(peer->ask("update túloldal"), "ok");
    rs->MoveFirst();  // read afresh: the other copy's change shows
    EXPECT_EQ(rs->get("Típus"), Variant("túloldal"));
    rs->Edit();
    EXPECT_EQ(peer->ask("edit 1"), "err 3260");  // and now this copy holds it
    rs->set("Típus", "végül");
    rs->Update();
    EXPECT_EQ(peer->ask("edit 1"), "ok");
    EXPECT_EQ(peer->ask("update vége"), "ok");
    rs->Requery();
    EXPECT_EQ(rs->get("Típus"), Variant("vége"));
    rs->MoveNext();
    EXPECT_EQ(rs->get("Típus"), Variant("itt"));
}

TEST_F(SharedFolderTest, ADeleteFailsOnARecordTheOtherCopyEdits) {
    ASSERT_EQ(peer->ask("edit 3"), "ok");
    auto rs = vehiclesById();
    rs->MoveLast();
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3260);
    EXPECT_EQ(rs->get("GkFrsz"), Variant("GYŐ-789"));
    ASSERT_EQ(peer->ask("update x"), "ok");
    rs->Delete();
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
}

TEST_F(SharedFolderTest, TwoCopiesAddingAtOnceLoseNoRowAndRequeryShowsTheOthers) {
    auto before = vehiclesById();
    peer->send("add 300 1000");
    auto rs = Database::open("Kerova.dsb")->OpenRecordset("Jarmuvek");
    for (int i = 2000; i < 2300; ++i) addVehicle(*rs, i, "H-" + std::to_string(i), "", 0);
    ASSERT_EQ(peer->receive(), "ok");

    before->MoveLast();
    EXPECT_EQ(before->RecordCount(), 3);  // the set as it was opened
    before->Requery();
    before->MoveLast();
    EXPECT_EQ(before->RecordCount(), 603);
    before->MoveFirst();
    std::set<int> ids;
    for (const Variant& v : column(*before, "recordID")) ids.insert(std::get<int32_t>(v));
    EXPECT_EQ(ids.size(), 603u);
    for (int id : {1, 2, 3, 1000, 1299, 2000, 2299}) EXPECT_TRUE(ids.count(id)) << id;
    before->FindFirst("[GkFrsz] = 'P-1299'");
    EXPECT_FALSE(before->NoMatch());

    ASSERT_EQ(peer->ask("quit"), "ok");
    before.reset();
    rs.reset();
    db::closeAll();
    auto csv = testsupport::run({"mdb-export", (dir.path() / "Kerova.dsb").string(), "Jarmuvek"});
    ASSERT_EQ(csv.exitCode, 0) << csv.err;
    EXPECT_EQ(std::count(csv.out.begin(), csv.out.end(), '\n'), 604);
}

}  // namespace
