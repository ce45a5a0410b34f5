#pragma once
// All typed reads and writes of the policy. Each operation builds its statement, opens the store, runs
// it, reads row 1 when it is a read, closes and answers true; a failure is reported through Show_Error
// and answers false. Outputs travel in the by-reference arguments.
//
// The subject is (C, U): computer id and user id. Where an operation addresses a single row, C below 1
// means the USER_TBL row with USER_ID = U, otherwise the COMPUTER_TBL row with COMPUTER_ID = C.
// Set_Internet_On_Off and Set_Schedule_For always write USER_TBL.
#include "store/modDB.h"

#include <QString>

namespace hv {

// Users and the selector.
bool Get_Users(long& rows, ResultTable& table);
bool Get_User_Id(long& id, const QString& name);
// Succeeds with `name` unchanged when the id has no row.
bool Get_User_Name(long C, long U, QString& name);
// INSERT OR IGNORE, then the row's key by its name: an existing name gives its existing key.
bool Add_User(const QString& name, long& id);
bool Remove_User(long C, long U);
bool Rename_User(const QString& name, long U);

// Device lock (three 2-bit fields).
bool Get_Device_Lock(long C, long U, long& lock);
bool Set_Device_Lock(long C, long U, long lock);
bool Copy_Device_Lock(long lock, long C, long U);

// Messages for blocked applications and sites.
bool Get_App_Message(long C, long U, long& type, QString& text);
bool Set_App_Message(long C, long U, long type, const QString& text);
bool Get_Url_Message(long C, long U, long& type, QString& text, QString& redirect);
bool Set_Url_Message(long C, long U, long type, const QString& text, const QString& redirect);
bool Get_User_Messages(long U, ResultTable& table, long& rows);
bool Copy_User_Messages(long U, long urlType, const QString& urlText, const QString& redirect, long appType,
                        const QString& appText);

// Installation settings (SETTINGS_TBL).
bool Get_Program_Mode(long& mode);
bool Set_Program_Mode(long mode);
bool Get_Client_Options(long& options);
bool Set_Client_Options(long options);
bool Get_Password(QString& text);
bool Set_Password(const QString& text);
// True when the password matches the stored one.
bool Check_Password(const QString& text);
// The port is stored as text; Get_Remote_Settings (modDB) reads it back as a number.
bool Set_Remote_Settings(long mode, const QString& server, const QString& port);

// Internet mode of a subject.
bool Set_Internet_On_Off(long value, long C, long U);
bool Set_Schedule_For(long value, long C, long U);
bool Get_Internet_On_Off(long C, long U, long& value);
bool Get_Schedule_For(long C, long U, long& value);

// Rule lists: one value column plus COMPUTER_ID and USER_ID.
bool Get_List_Items(const QString& column, const QString& tableName, long C, long U, ResultTable& table,
                    long& rows);
bool Update_List_Item(const QString& column, const QString& tableName, const QString& oldValue,
                      const QString& newValue, long C, long U);
bool Remove_User_Rows(long U, const QString& tableName);
// The row count is not handed out: callers take it from the table.
bool Get_Bypass_Exes(long C, long U, ResultTable& table);

// Ports. kind 0: filter rows (FILTER_TYPE below 60000); otherwise blocking rows (above 60000).
bool Add_Port(long port, long filterType, const QString& protocol, long C, long U);
bool Get_Ports(long kind, long C, long U, ResultTable& table, long& rows);

// Schedules (SCH_TBL). Add_Schedule leaves the new row's SCH_ID at (1,0) of `table`; it finds the row by
// searching for an identical one, so of two identical schedules the older key comes back.
bool Add_Schedule(long family, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                  const QString& toTime, long C, long U, ResultTable& table);
bool Update_Schedule(long id, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                     const QString& toTime);
bool Get_Schedules(long family, long C, long U, ResultTable& table, long& rows);
bool Remove_Schedule(long id);
bool Remove_User_Schedules(long family, long U);

// Users exempt from filtering. Add_Exception_User relies on Is_New_Exception_User being asked first.
bool Add_Exception_User(const QString& name, long& id);
bool Remove_Exception_User(long ignored, long id);
bool Rename_Exception_User(const QString& name, long id);
bool Get_Exception_Users(long& rows, ResultTable& table);
// True when no exception row has the name (compared upper-cased).
bool Is_New_Exception_User(const QString& name);

// Batch operations: on the caller's open connection inside its transaction; no open, no close.
// A handle of 0 gives false.
bool Add_List_Item(int handle, ResultTable& table, const QString& column, const QString& tableName,
                   const QString& value, long C, long U);
bool Remove_List_Item(int handle, ResultTable& table, const QString& column, const QString& tableName,
                      const QString& value, long C, long U);
bool Add_Bypass_Exe(int handle, ResultTable& table, long C, long U, const QString& name);
bool Remove_Bypass_Exe(int handle, ResultTable& table, long C, long U, const QString& name);
// Add_User's two statements on the caller's connection, so that an import of thousands of names is
// written in one transaction rather than one commit a name.
bool Add_User(int handle, ResultTable& table, const QString& name, long& id);

// Bit columns (constants in store/Bits.h). Set_* reads, changes and writes back without testing the
// read: after a failed read the value is 0 and the other bits are lost.
bool Load_Feature_Bits(long C, long U, long& bits);
bool Save_Feature_Bits(long C, long U, long bits);
// True when any bit of `bit` is set (so 0 is never set).
bool Is_Feature_Bit_Set(long C, long U, long bit);
void Set_Feature_Bit(bool on, long bit, long C, long U);
bool Load_Status_Bits(long C, long U, long& bits);
bool Save_Status_Bits(long C, long U, long bits);
void Set_Status_Bit(bool on, long bit, long C, long U);

} // namespace hv
