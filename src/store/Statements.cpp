#include "store/Statements.h"

namespace hv::stmt {

Subject Subject_Row(long C, long U) {
    if (C < 1)
        return {"USER_TBL", "USER_ID", U};
    return {"COMPUTER_TBL", "COMPUTER_ID", C};
}

const char* Column_Name(BitColumn column) {
    return column == BitColumn::Feature ? "FEATURE_BITS" : "STATUS_BITS";
}

// ---- users

Sql Get_Users() {
    return Sql("SELECT USER_NAME, USER_ID FROM USER_TBL ORDER BY USER_ID");
}

Sql Get_User_Id(const QString& name) {
    return Sql("SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)='") << txt(name.toUpper()) << "'";
}

Sql Get_User_Name(long U) {
    return Sql("SELECT USER_NAME FROM USER_TBL WHERE USER_ID=") << num(U);
}

Sql Add_User_Insert(const QString& name) {
    return Sql("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES('") << txt(name) << "')";
}

Sql Add_User_Lookup(const QString& name) {
    return Sql("SELECT USER_ID FROM USER_TBL WHERE USER_NAME= '") << txt(name) << "'";
}

Sql Remove_User(long U) {
    return Sql("DELETE FROM USER_TBL WHERE USER_ID= ") << num(U);
}

Sql Rename_User(const QString& name, long U) {
    return Sql("UPDATE USER_TBL SET USER_NAME='") << txt(name) << "' WHERE USER_ID= " << num(U);
}

// ---- single-row settings of a subject

namespace {
// "SELECT <columns> FROM <table> WHERE <key>= <id>", the form all the subject reads share.
Sql Subject_Read(const char* columns, long C, long U) {
    const Subject s = Subject_Row(C, U);
    Sql sql("SELECT ");
    sql << columns << " FROM " << ident(QString::fromLatin1(s.table)) << " WHERE "
        << ident(QString::fromLatin1(s.key));
    sql << "= " << num(s.id);
    return sql;
}

Sql& Subject_Update_Head(Sql& sql, const Subject& s) {
    return sql << "UPDATE " << ident(QString::fromLatin1(s.table)) << " SET ";
}

// " WHERE <key> = <id>", the tail of the subject writes.
Sql& Subject_Update_Tail(Sql& sql, const Subject& s) {
    return sql << " WHERE " << ident(QString::fromLatin1(s.key)) << " = " << num(s.id);
}
} // namespace

Sql Get_Device_Lock(long C, long U) {
    return Subject_Read("DEVICE_LOCK", C, U);
}

Sql Set_Device_Lock(long C, long U, long lock) {
    const Subject s = Subject_Row(C, U);
    Sql sql;
    Subject_Update_Head(sql, s) << "DEVICE_LOCK=" << num(lock);
    return Subject_Update_Tail(sql, s);
}

Sql Copy_Device_Lock(long lock, long U) {
    return Sql("UPDATE USER_TBL SET DEVICE_LOCK=") << num(lock) << " WHERE USER_ID=" << num(U);
}

Sql Get_App_Message(long C, long U) {
    return Subject_Read("APP_MSG_TYPE,APP_BLOCKER_MSG", C, U);
}

Sql Set_App_Message(long C, long U, long type, const QString& text) {
    const Subject s = Subject_Row(C, U);
    Sql sql;
    Subject_Update_Head(sql, s) << "APP_MSG_TYPE=" << num(type) << ",APP_BLOCKER_MSG ='" << txt(text) << "'";
    return Subject_Update_Tail(sql, s);
}

Sql Get_Url_Message(long C, long U) {
    return Subject_Read("URL_MSG_TYPE,BLOCKED_URL_MSG,REDIRECT_URL", C, U);
}

Sql Set_Url_Message(long C, long U, long type, const QString& text, const QString& redirect) {
    const Subject s = Subject_Row(C, U);
    Sql sql;
    Subject_Update_Head(sql, s) << "URL_MSG_TYPE=" << num(type) << ",BLOCKED_URL_MSG ='" << txt(text)
                                << "',REDIRECT_URL ='" << txt(redirect) << "'";
    return Subject_Update_Tail(sql, s);
}

Sql Get_User_Messages(long U) {
    return Sql("SELECT URL_MSG_TYPE,BLOCKED_URL_MSG,REDIRECT_URL,APP_MSG_TYPE,APP_BLOCKER_MSG FROM USER_TBL "
               "WHERE USER_ID=")
           << num(U);
}

Sql Copy_User_Messages(long U, long urlType, const QString& urlText, const QString& redirect, long appType,
                       const QString& appText) {
    return Sql("UPDATE USER_TBL SET URL_MSG_TYPE=")
           << num(urlType) << ",BLOCKED_URL_MSG='" << txt(urlText) << "',REDIRECT_URL='" << txt(redirect)
           << "',APP_MSG_TYPE=" << num(appType) << ",APP_BLOCKER_MSG='" << txt(appText)
           << "' WHERE USER_ID=" << num(U);
}

// ---- installation settings

Sql Get_Program_Mode() {
    return Sql("SELECT PROGRAM_MODE FROM SETTINGS_TBL");
}

Sql Set_Program_Mode(long mode) {
    return Sql("UPDATE SETTINGS_TBL SET PROGRAM_MODE = ") << num(mode) << " WHERE SETTINGS_ID=1";
}

Sql Get_Client_Options() {
    return Sql("SELECT CLIENT_OPTIONS FROM SETTINGS_TBL");
}

Sql Set_Client_Options(long options) {
    return Sql("UPDATE SETTINGS_TBL SET CLIENT_OPTIONS = ") << num(options) << " WHERE SETTINGS_ID=1";
}

Sql Get_Password() {
    return Sql("SELECT PWD FROM SETTINGS_TBL WHERE SETTINGS_ID=1");
}

Sql Set_Password(const QString& text) {
    return Sql("UPDATE SETTINGS_TBL SET PWD= '") << txt(text) << "' WHERE SETTINGS_ID=1";
}

Sql Check_Password(const QString& text) {
    return Sql("SELECT COUNT(*) FROM SETTINGS_TBL WHERE PWD='") << txt(text) << "'";
}

Sql Get_Remote_Settings() {
    return Sql("SELECT REMOTE_MODE,SERVER_NAME,CLIENT_PORT FROM SETTINGS_TBL WHERE SETTINGS_ID=1");
}

Sql Set_Remote_Settings(long mode, const QString& server, const QString& port) {
    return Sql("UPDATE SETTINGS_TBL SET REMOTE_MODE = ")
           << num(mode) << " ,SERVER_NAME='" << txt(server) << "' ,CLIENT_PORT='" << txt(port)
           << "' WHERE SETTINGS_ID=1";
}

// ---- internet mode; the two writers address the user's row only

Sql Set_Internet_On_Off(long value, long U) {
    return Sql("UPDATE USER_TBL SET SCH_FOR= 1, IA_ON_OFF=") << num(value) << " WHERE USER_ID=" << num(U);
}

Sql Set_Schedule_For(long value, long U) {
    return Sql("UPDATE USER_TBL SET SCH_FOR=") << num(value) << " WHERE USER_ID=" << num(U);
}

Sql Get_Internet_On_Off(long C, long U) {
    return Subject_Read("IA_ON_OFF", C, U);
}

Sql Get_Schedule_For(long C, long U) {
    return Subject_Read("SCH_FOR", C, U);
}

// ---- bit columns

Sql Load_Bits(BitColumn column, long C, long U) {
    const Subject s = Subject_Row(C, U);
    return Sql("SELECT ") << ident(QString::fromLatin1(Column_Name(column))) << " FROM "
                          << ident(QString::fromLatin1(s.table)) << " WHERE "
                          << ident(QString::fromLatin1(s.key)) << "=" << num(s.id);
}

Sql Save_Bits(BitColumn column, long C, long U, long bits) {
    const Subject s = Subject_Row(C, U);
    return Sql("UPDATE ") << ident(QString::fromLatin1(s.table)) << " SET "
                          << ident(QString::fromLatin1(Column_Name(column))) << "=" << num(bits) << " WHERE "
                          << ident(QString::fromLatin1(s.key)) << "=" << num(s.id);
}

// ---- rule lists

Sql Get_List_Items(const QString& column, const QString& tableName, long C, long U) {
    return Sql("SELECT ") << ident(column) << " FROM " << ident(tableName) << " WHERE COMPUTER_ID=" << num(C)
                          << " AND USER_ID=" << num(U);
}

Sql Update_List_Item(const QString& column, const QString& tableName, const QString& oldValue,
                     const QString& newValue, long C, long U) {
    return Sql("UPDATE ") << ident(tableName) << " SET " << ident(column) << "='" << txt(newValue)
                          << "' WHERE " << ident(column) << "='" << txt(oldValue)
                          << "' AND COMPUTER_ID=" << num(C) << " AND USER_ID=" << num(U);
}

Sql Remove_User_Rows(long U, const QString& tableName) {
    return Sql("DELETE FROM ") << ident(tableName) << " WHERE USER_ID=" << num(U);
}

Sql Add_List_Item(const QString& column, const QString& tableName, const QString& value, long C, long U) {
    return Sql("INSERT OR IGNORE INTO ")
           << ident(tableName) << "(" << ident(column) << " ,COMPUTER_ID,USER_ID) VALUES('" << txt(value)
           << "'," << num(C) << "," << num(U) << ")";
}

Sql Remove_List_Item(const QString& column, const QString& tableName, const QString& value, long C, long U) {
    return Sql("DELETE FROM ") << ident(tableName) << " WHERE " << ident(column) << "='" << txt(value)
                               << "' AND COMPUTER_ID=" << num(C) << " AND USER_ID=" << num(U);
}

// ---- programs always let through

Sql Get_Bypass_Exes(long C, long U) {
    const Subject s = Subject_Row(C, U);
    return Sql("SELECT BYPASS_EXE FROM BYPASS_EXE_TBL WHERE ")
           << ident(QString::fromLatin1(s.key)) << "= " << num(s.id);
}

Sql Add_Bypass_Exe(long C, long U, const QString& name) {
    return Sql("INSERT INTO BYPASS_EXE_TBL (BYPASS_EXE,COMPUTER_ID,USER_ID) VALUES ('")
           << txt(name) << "'," << num(C) << "," << num(U) << ")";
}

Sql Remove_Bypass_Exe(long C, long U, const QString& name) {
    const Subject s = Subject_Row(C, U);
    return Sql("DELETE FROM BYPASS_EXE_TBL WHERE UPPER(BYPASS_EXE)='")
           << txt(name.toUpper()) << "' AND " << ident(QString::fromLatin1(s.key)) << "=" << num(s.id);
}

// ---- ports

Sql Add_Port(long port, long filterType, const QString& protocol, long C, long U) {
    return Sql("INSERT INTO PORT_TBL(PORT_NO,FILTER_TYPE,PROTOCOL_TYPE,COMPUTER_ID,USER_ID) VALUES(")
           << num(port) << "," << num(filterType) << ",'" << txt(protocol) << "'," << num(C) << "," << num(U)
           << ")";
}

Sql Get_Ports(long kind, long C, long U) {
    // 60000 itself is neither a filter row nor a blocking row.
    Sql sql("SELECT PORT_NO,FILTER_TYPE,PROTOCOL_TYPE FROM PORT_TBL WHERE COMPUTER_ID=");
    sql << num(C) << " AND USER_ID=" << num(U);
    if (kind == 0)
        sql << " AND FILTER_TYPE < 60000 ";
    else
        sql << " AND FILTER_TYPE > 60000 ";
    return sql;
}

// ---- schedules

Sql Add_Schedule_Insert(long family, long subType, long dwm, long weekdays, long months,
                        const QString& fromTime, const QString& toTime, long C, long U) {
    return Sql("INSERT INTO SCH_TBL "
               "(SCH_FOR,SCH_SUB_TYPE,D_W_M,WEEKDAYS,MONTHS,FROM_TIME,TO_TIME,COMPUTER_ID,"
               "USER_ID) VALUES(")
           << num(family) << "," << num(subType) << "," << num(dwm) << "," << num(weekdays) << ","
           << num(months) << ",'" << txt(fromTime) << "','" << txt(toTime) << "'," << num(C) << "," << num(U)
           << ")";
}

Sql Add_Schedule_Lookup(long family, long subType, long dwm, long weekdays, long months,
                        const QString& fromTime, const QString& toTime, long C, long U) {
    return Sql("SELECT SCH_ID FROM SCH_TBL WHERE SCH_FOR=")
           << num(family) << " AND SCH_SUB_TYPE=" << num(subType) << " AND D_W_M=" << num(dwm)
           << " AND WEEKDAYS=" << num(weekdays) << " AND MONTHS=" << num(months) << " AND FROM_TIME='"
           << txt(fromTime) << "' AND TO_TIME='" << txt(toTime) << "' AND COMPUTER_ID=" << num(C)
           << " AND USER_ID=" << num(U);
}

Sql Update_Schedule(long id, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                    const QString& toTime) {
    return Sql("UPDATE SCH_TBL SET SCH_SUB_TYPE=")
           << num(subType) << ",D_W_M=" << num(dwm) << ",WEEKDAYS=" << num(weekdays)
           << ",MONTHS=" << num(months) << ",FROM_TIME='" << txt(fromTime) << "',TO_TIME='" << txt(toTime)
           << "' WHERE SCH_ID=" << num(id);
}

Sql Get_Schedules(long family, long C, long U) {
    return Sql("SELECT SCH_ID,D_W_M,FROM_TIME,TO_TIME,WEEKDAYS,MONTHS FROM SCH_TBL WHERE COMPUTER_ID=")
           << num(C) << " AND USER_ID=" << num(U) << " AND SCH_FOR=" << num(family);
}

Sql Remove_Schedule(long id) {
    return Sql("DELETE FROM SCH_TBL WHERE SCH_ID=") << num(id);
}

Sql Remove_User_Schedules(long family, long U) {
    return Sql("DELETE FROM SCH_TBL WHERE SCH_FOR=") << num(family) << " AND USER_ID=" << num(U);
}

// ---- exception users

Sql Add_Exception_User_Insert(const QString& name) {
    return Sql("INSERT INTO USER_EXCPN_TBL (E_USER_NAME) VALUES('") << txt(name) << "')";
}

Sql Add_Exception_User_Lookup(const QString& name) {
    return Sql("SELECT E_ID FROM USER_EXCPN_TBL WHERE E_USER_NAME= '") << txt(name) << "'";
}

Sql Remove_Exception_User(long id) {
    return Sql("DELETE FROM USER_EXCPN_TBL WHERE E_ID= ") << num(id);
}

Sql Rename_Exception_User(const QString& name, long id) {
    return Sql("UPDATE USER_EXCPN_TBL SET E_USER_NAME='") << txt(name) << "' WHERE E_ID= " << num(id);
}

Sql Get_Exception_Users() {
    return Sql("SELECT E_USER_NAME,E_ID FROM USER_EXCPN_TBL");
}

Sql Is_New_Exception_User(const QString& name) {
    return Sql("SELECT COUNT(E_ID) FROM USER_EXCPN_TBL WHERE UPPER(E_USER_NAME)='")
           << txt(name.toUpper()) << "'";
}

} // namespace hv::stmt
