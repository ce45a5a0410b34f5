// Every statement the policy operations run, filled with sample values and read back as text. The
// enforcement components parse these rows, so each text is held to the letter, blanks included.
#include "reporting/model/ReportKinds.h"
#include "store/Statements.h"
#include "store/modDB.h"

#include "setup/StoreSetup.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <vector>

namespace {

using namespace hv;

struct Case {
    Sql sql;
    const char* expected;
};

std::vector<Case> All_Statements() {
    using namespace hv::stmt;
    const QString u = QStringLiteral("alice");
    const QDate d1(2026, 1, 14), d2(2026, 1, 15);
    return {
        // users
        {Get_Users(), "SELECT USER_NAME, USER_ID FROM USER_TBL ORDER BY USER_ID"},
        {Get_User_Id(u), "SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)='ALICE'"},
        {Get_User_Name(7), "SELECT USER_NAME FROM USER_TBL WHERE USER_ID=7"},
        {Add_User_Insert(u), "INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES('alice')"},
        {Add_User_Lookup(u), "SELECT USER_ID FROM USER_TBL WHERE USER_NAME= 'alice'"},
        {Remove_User(7), "DELETE FROM USER_TBL WHERE USER_ID= 7"},
        {Rename_User(u, 7), "UPDATE USER_TBL SET USER_NAME='alice' WHERE USER_ID= 7"},
        // device lock, both branches of the subject rule
        {Get_Device_Lock(0, 7), "SELECT DEVICE_LOCK FROM USER_TBL WHERE USER_ID= 7"},
        {Get_Device_Lock(3, 7), "SELECT DEVICE_LOCK FROM COMPUTER_TBL WHERE COMPUTER_ID= 3"},
        {Set_Device_Lock(0, 7, 13), "UPDATE USER_TBL SET DEVICE_LOCK=13 WHERE USER_ID = 7"},
        {Set_Device_Lock(3, 7, 13), "UPDATE COMPUTER_TBL SET DEVICE_LOCK=13 WHERE COMPUTER_ID = 3"},
        {Copy_Device_Lock(13, 7), "UPDATE USER_TBL SET DEVICE_LOCK=13 WHERE USER_ID=7"},
        // messages
        {Get_App_Message(0, 7), "SELECT APP_MSG_TYPE,APP_BLOCKER_MSG FROM USER_TBL WHERE USER_ID= 7"},
        {Get_App_Message(3, 7), "SELECT APP_MSG_TYPE,APP_BLOCKER_MSG FROM COMPUTER_TBL WHERE COMPUTER_ID= 3"},
        {Set_App_Message(0, 7, 1, "No games"),
         "UPDATE USER_TBL SET APP_MSG_TYPE=1,APP_BLOCKER_MSG ='No games' WHERE USER_ID = 7"},
        {Set_App_Message(3, 7, 1, "No games"),
         "UPDATE COMPUTER_TBL SET APP_MSG_TYPE=1,APP_BLOCKER_MSG ='No games' WHERE COMPUTER_ID = 3"},
        {Get_Url_Message(0, 7),
         "SELECT URL_MSG_TYPE,BLOCKED_URL_MSG,REDIRECT_URL FROM USER_TBL WHERE USER_ID= 7"},
        {Get_Url_Message(3, 7),
         "SELECT URL_MSG_TYPE,BLOCKED_URL_MSG,REDIRECT_URL FROM COMPUTER_TBL WHERE COMPUTER_ID= 3"},
        {Set_Url_Message(0, 7, 3, "Blocked", "http://x.example/"),
         "UPDATE USER_TBL SET URL_MSG_TYPE=3,BLOCKED_URL_MSG ='Blocked',REDIRECT_URL ='http://x.example/' "
         "WHERE USER_ID = 7"},
        {Set_Url_Message(3, 7, 3, "Blocked", "http://x.example/"),
         "UPDATE COMPUTER_TBL SET URL_MSG_TYPE=3,BLOCKED_URL_MSG ='Blocked',REDIRECT_URL "
         "='http://x.example/' WHERE COMPUTER_ID = 3"},
        {Get_User_Messages(7),
         "SELECT URL_MSG_TYPE,BLOCKED_URL_MSG,REDIRECT_URL,APP_MSG_TYPE,APP_BLOCKER_MSG FROM USER_TBL "
         "WHERE USER_ID=7"},
        {Copy_User_Messages(7, 2, "Blocked", "r.example", 1, "No games"),
         "UPDATE USER_TBL SET URL_MSG_TYPE=2,BLOCKED_URL_MSG='Blocked',REDIRECT_URL='r.example',"
         "APP_MSG_TYPE=1,APP_BLOCKER_MSG='No games' WHERE USER_ID=7"},
        // settings
        {Get_Program_Mode(), "SELECT PROGRAM_MODE FROM SETTINGS_TBL"},
        {Set_Program_Mode(1), "UPDATE SETTINGS_TBL SET PROGRAM_MODE = 1 WHERE SETTINGS_ID=1"},
        {Get_Client_Options(), "SELECT CLIENT_OPTIONS FROM SETTINGS_TBL"},
        {Set_Client_Options(5), "UPDATE SETTINGS_TBL SET CLIENT_OPTIONS = 5 WHERE SETTINGS_ID=1"},
        {Get_Password(), "SELECT PWD FROM SETTINGS_TBL WHERE SETTINGS_ID=1"},
        {Set_Password("Watchman"), "UPDATE SETTINGS_TBL SET PWD= 'Watchman' WHERE SETTINGS_ID=1"},
        {Check_Password("Watchman"), "SELECT COUNT(*) FROM SETTINGS_TBL WHERE PWD='Watchman'"},
        {Get_Remote_Settings(),
         "SELECT REMOTE_MODE,SERVER_NAME,CLIENT_PORT FROM SETTINGS_TBL WHERE SETTINGS_ID=1"},
        {Set_Remote_Settings(1, "srv01", "8080"),
         "UPDATE SETTINGS_TBL SET REMOTE_MODE = 1 ,SERVER_NAME='srv01' ,CLIENT_PORT='8080' WHERE "
         "SETTINGS_ID=1"},
        // internet mode
        {Set_Internet_On_Off(0, 7), "UPDATE USER_TBL SET SCH_FOR= 1, IA_ON_OFF=0 WHERE USER_ID=7"},
        {Set_Schedule_For(2, 7), "UPDATE USER_TBL SET SCH_FOR=2 WHERE USER_ID=7"},
        {Get_Internet_On_Off(0, 7), "SELECT IA_ON_OFF FROM USER_TBL WHERE USER_ID= 7"},
        {Get_Internet_On_Off(3, 7), "SELECT IA_ON_OFF FROM COMPUTER_TBL WHERE COMPUTER_ID= 3"},
        {Get_Schedule_For(0, 7), "SELECT SCH_FOR FROM USER_TBL WHERE USER_ID= 7"},
        {Get_Schedule_For(3, 7), "SELECT SCH_FOR FROM COMPUTER_TBL WHERE COMPUTER_ID= 3"},
        // the subject rule turns at computer 1, the first computer id, not at any C above 0
        {Get_Schedule_For(-1, 7), "SELECT SCH_FOR FROM USER_TBL WHERE USER_ID= 7"},
        {Get_Schedule_For(1, 7), "SELECT SCH_FOR FROM COMPUTER_TBL WHERE COMPUTER_ID= 1"},
        // rule lists
        {Get_List_Items("BL_URL", "BL_TBL", 0, 7),
         "SELECT BL_URL FROM BL_TBL WHERE COMPUTER_ID=0 AND USER_ID=7"},
        {Update_List_Item("FILE_EXTN", "FILE_TBL", "exe", "com", 0, 7),
         "UPDATE FILE_TBL SET FILE_EXTN='com' WHERE FILE_EXTN='exe' AND COMPUTER_ID=0 AND USER_ID=7"},
        {Remove_User_Rows(7, "SMTP_TBL"), "DELETE FROM SMTP_TBL WHERE USER_ID=7"},
        {Get_Bypass_Exes(0, 7), "SELECT BYPASS_EXE FROM BYPASS_EXE_TBL WHERE USER_ID= 7"},
        {Get_Bypass_Exes(3, 7), "SELECT BYPASS_EXE FROM BYPASS_EXE_TBL WHERE COMPUTER_ID= 3"},
        {Add_List_Item("BL_URL", "BL_TBL", "games.example", 0, 7),
         "INSERT OR IGNORE INTO BL_TBL(BL_URL ,COMPUTER_ID,USER_ID) VALUES('games.example',0,7)"},
        {Remove_List_Item("WINDOW_TITLE", "WINDOW_TBL", "Solitaire", 0, 7),
         "DELETE FROM WINDOW_TBL WHERE WINDOW_TITLE='Solitaire' AND COMPUTER_ID=0 AND USER_ID=7"},
        {Add_Bypass_Exe(0, 7, "update.exe"),
         "INSERT INTO BYPASS_EXE_TBL (BYPASS_EXE,COMPUTER_ID,USER_ID) VALUES ('update.exe',0,7)"},
        {Remove_Bypass_Exe(0, 7, "update.exe"),
         "DELETE FROM BYPASS_EXE_TBL WHERE UPPER(BYPASS_EXE)='UPDATE.EXE' AND USER_ID=7"},
        {Remove_Bypass_Exe(3, 7, "update.exe"),
         "DELETE FROM BYPASS_EXE_TBL WHERE UPPER(BYPASS_EXE)='UPDATE.EXE' AND COMPUTER_ID=3"},
        // ports
        {Add_Port(8080, 1, "TCP", 0, 7),
         "INSERT INTO PORT_TBL(PORT_NO,FILTER_TYPE,PROTOCOL_TYPE,COMPUTER_ID,USER_ID) VALUES(8080,1,'TCP',"
         "0,7)"},
        {Get_Ports(0, 0, 7),
         "SELECT PORT_NO,FILTER_TYPE,PROTOCOL_TYPE FROM PORT_TBL WHERE COMPUTER_ID=0 AND USER_ID=7 AND "
         "FILTER_TYPE < 60000 "},
        {Get_Ports(1, 0, 7),
         "SELECT PORT_NO,FILTER_TYPE,PROTOCOL_TYPE FROM PORT_TBL WHERE COMPUTER_ID=0 AND USER_ID=7 AND "
         "FILTER_TYPE > 60000 "},
        // schedules
        {Add_Schedule_Insert(1, 0, 2, 10, 0, "08:00", "09:30", 0, 7),
         "INSERT INTO SCH_TBL (SCH_FOR,SCH_SUB_TYPE,D_W_M,WEEKDAYS,MONTHS,FROM_TIME,TO_TIME,COMPUTER_ID,"
         "USER_ID) VALUES(1,0,2,10,0,'08:00','09:30',0,7)"},
        {Add_Schedule_Lookup(1, 0, 2, 10, 0, "08:00", "09:30", 0, 7),
         "SELECT SCH_ID FROM SCH_TBL WHERE SCH_FOR=1 AND SCH_SUB_TYPE=0 AND D_W_M=2 AND WEEKDAYS=10 AND "
         "MONTHS=0 AND FROM_TIME='08:00' AND TO_TIME='09:30' AND COMPUTER_ID=0 AND USER_ID=7"},
        {Update_Schedule(42, 1, 3, 0, 2048, "10:00", "11:00"),
         "UPDATE SCH_TBL SET SCH_SUB_TYPE=1,D_W_M=3,WEEKDAYS=0,MONTHS=2048,FROM_TIME='10:00',"
         "TO_TIME='11:00' WHERE SCH_ID=42"},
        {Get_Schedules(2, 0, 7),
         "SELECT SCH_ID,D_W_M,FROM_TIME,TO_TIME,WEEKDAYS,MONTHS FROM SCH_TBL WHERE COMPUTER_ID=0 AND "
         "USER_ID=7 AND SCH_FOR=2"},
        {Remove_Schedule(42), "DELETE FROM SCH_TBL WHERE SCH_ID=42"},
        {Remove_User_Schedules(1, 7), "DELETE FROM SCH_TBL WHERE SCH_FOR=1 AND USER_ID=7"},
        // exception users
        {Add_Exception_User_Insert(u), "INSERT INTO USER_EXCPN_TBL (E_USER_NAME) VALUES('alice')"},
        {Add_Exception_User_Lookup(u), "SELECT E_ID FROM USER_EXCPN_TBL WHERE E_USER_NAME= 'alice'"},
        {Remove_Exception_User(5), "DELETE FROM USER_EXCPN_TBL WHERE E_ID= 5"},
        {Rename_Exception_User(u, 5), "UPDATE USER_EXCPN_TBL SET E_USER_NAME='alice' WHERE E_ID= 5"},
        {Get_Exception_Users(), "SELECT E_USER_NAME,E_ID FROM USER_EXCPN_TBL"},
        {Is_New_Exception_User(u), "SELECT COUNT(E_ID) FROM USER_EXCPN_TBL WHERE UPPER(E_USER_NAME)='ALICE'"},
        // the batch pattern's transaction, shared with the report pages' Run_In_Transaction
        {Sql(kBeginTrans), "BEGIN DEFERRED TRANSACTION MY_TRANS"},
        {Sql(kCommitTrans), "COMMIT TRANSACTION MY_TRANS"},
        // bit columns
        {Load_Bits(BitColumn::Feature, 0, 7), "SELECT FEATURE_BITS FROM USER_TBL WHERE USER_ID=7"},
        {Load_Bits(BitColumn::Feature, 3, 7), "SELECT FEATURE_BITS FROM COMPUTER_TBL WHERE COMPUTER_ID=3"},
        {Save_Bits(BitColumn::Feature, 0, 7, 260), "UPDATE USER_TBL SET FEATURE_BITS=260 WHERE USER_ID=7"},
        {Save_Bits(BitColumn::Feature, 3, 7, 260),
         "UPDATE COMPUTER_TBL SET FEATURE_BITS=260 WHERE COMPUTER_ID=3"},
        {Load_Bits(BitColumn::Status, 0, 7), "SELECT STATUS_BITS FROM USER_TBL WHERE USER_ID=7"},
        {Load_Bits(BitColumn::Status, 3, 7), "SELECT STATUS_BITS FROM COMPUTER_TBL WHERE COMPUTER_ID=3"},
        {Save_Bits(BitColumn::Status, 0, 7, 4), "UPDATE USER_TBL SET STATUS_BITS=4 WHERE USER_ID=7"},
        {Save_Bits(BitColumn::Status, 3, 7, 4), "UPDATE COMPUTER_TBL SET STATUS_BITS=4 WHERE COMPUTER_ID=3"},
        // reports: the range runs to the midnight after the stop date; the delete's to the stop date itself
        {report::Report_Query(0, 0, 7, d1, d2, "URL", false),
         "SELECT URL,DOMAIN_NAME,EXE_NAME,SEND_BITS,RECEIVED_BITS,START_TIME,STOP_TIME FROM URL_RPT_TBL "
         "WHERE "
         "USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND STOP_TIME<'2026-01-16 00:00:00' ORDER BY URL "
         "ASC"},
        {report::Report_Query(0, 1, 7, d1, d2, "DOMAIN_NAME", true),
         "SELECT DOMAIN_NAME,COUNT(DOMAIN_NAME) FROM URL_RPT_TBL WHERE USER_ID=7 AND START_TIME>='2026-01-14 "
         "00:00:00' AND STOP_TIME<'2026-01-16 00:00:00' GROUP BY DOMAIN_NAME ORDER BY DOMAIN_NAME DESC"},
        {report::Report_Query(1, 0, 7, d1, d2, "COMPANY_NAME", false),
         "SELECT PROGRAM_NAME,PRODUCT_NAME,PROGRAM_TITLE,PROGRAM_PATH,COMPANY_NAME,START_TIME,STOP_TIME FROM "
         "PROGRAM_RPT_TBL WHERE USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND STOP_TIME<'2026-01-16 "
         "00:00:00' ORDER BY COMPANY_NAME ASC"},
        {report::Report_Query(2, 2, 7, d1, d2, "MANUFACTURER", false),
         "SELECT DEVICE,DEVICE_DESCRIPTION,DEVICE_LABEL,MANUFACTURER,START_TIME,STOP_TIME FROM "
         "DEVICE_RPT_TBL "
         "WHERE USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND STOP_TIME<'2026-01-16 00:00:00' AND "
         "DEVICE_TYPE=2 ORDER BY MANUFACTURER ASC"},
        {report::Report_Query(3, 1, 7, d1, d2, "START_TIME", true),
         "SELECT FROM_ADDRESS,TO_ADDRESS,CC_ADDRESS,BCC_ADDRESS,SUBJECT,START_TIME,ATTACHMENT FROM "
         "EMAIL_RPT_TBL "
         "WHERE USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND START_TIME<'2026-01-16 00:00:00' AND "
         "EMAIL_TYPE=1 ORDER BY START_TIME DESC"},
        {report::Report_Delete(0, 0, 7, d1, d2),
         "DELETE FROM URL_RPT_TBL WHERE USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND "
         "STOP_TIME<='2026-01-15 00:00:00'"},
        {report::Report_Delete(1, 0, 7, d1, d2),
         "DELETE FROM PROGRAM_RPT_TBL WHERE USER_ID=7 AND START_TIME>='2026-01-14 00:00:00' AND "
         "STOP_TIME<='2026-01-15 00:00:00'"},
        {report::Report_Delete(2, 1, 7, d1, d2), "DELETE FROM DEVICE_RPT_TBL WHERE USER_ID=7 AND "
                                                 "DEVICE_TYPE=1  AND START_TIME>='2026-01-14 00:00:00' "
                                                 "AND STOP_TIME<='2026-01-15 00:00:00'"},
        {report::Report_Delete(3, 0, 7, d1, d2),
         "DELETE FROM EMAIL_RPT_TBL WHERE USER_ID=7 AND EMAIL_TYPE=0  AND START_TIME>='2026-01-14 00:00:00' "
         "AND START_TIME<='2026-01-15 00:00:00'"},
    };
}

TEST(StatementsText, EveryStatementReadsExactlyAsWritten) {
    for (const Case& c : All_Statements())
        EXPECT_EQ(c.sql.Literal_Text().toStdString(), std::string(c.expected));
}

// Every statement, in the form it reads and in the form that is prepared, compiles against the store the
// installer lays down: each table and column it names is there.
TEST(StatementsText, EveryStatementCompilesAgainstTheInstalledStore) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("hvpolicy.iil"));
    QString error;
    ASSERT_TRUE(Create_Store(path, false, &error)) << error.toStdString();
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    for (const Case& c : All_Statements()) {
        for (const QString& text : {c.sql.Literal_Text(), c.sql.Bound_Text()}) {
            sqlite3_stmt* stmt = nullptr;
            const int rc = sqlite3_prepare_v2(db, text.toUtf8().constData(), -1, &stmt, nullptr);
            EXPECT_EQ(rc, SQLITE_OK) << text.toStdString() << ": " << sqlite3_errmsg(db);
            sqlite3_finalize(stmt);
        }
    }
    sqlite3_close(db);
}

} // namespace
