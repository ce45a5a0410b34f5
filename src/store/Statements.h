#pragma once
// The statements of the policy operations, one builder each, so that the text an operation runs can be
// read back and compared word for word. The blanks around "=" differ from statement to statement; the
// enforcement components were written against these very texts, so each is kept as it stands.
#include "store/Sql.h"

#include <QString>

namespace hv::stmt {

// The row a single-row operation addresses: C below 1 means the user's row, otherwise the computer's.
struct Subject {
    const char* table; // "USER_TBL" or "COMPUTER_TBL"
    const char* key;   // "USER_ID" or "COMPUTER_ID"
    long id;
};
Subject Subject_Row(long C, long U);

enum class BitColumn { Feature, Status };
const char* Column_Name(BitColumn column); // "FEATURE_BITS" / "STATUS_BITS"

Sql Get_Users();
Sql Get_User_Id(const QString& name);
Sql Get_User_Name(long U);
Sql Add_User_Insert(const QString& name);
Sql Add_User_Lookup(const QString& name);
Sql Remove_User(long U);
Sql Rename_User(const QString& name, long U);

Sql Get_Device_Lock(long C, long U);
Sql Set_Device_Lock(long C, long U, long lock);
Sql Copy_Device_Lock(long lock, long U);

Sql Get_App_Message(long C, long U);
Sql Set_App_Message(long C, long U, long type, const QString& text);
Sql Get_Url_Message(long C, long U);
Sql Set_Url_Message(long C, long U, long type, const QString& text, const QString& redirect);
Sql Get_User_Messages(long U);
Sql Copy_User_Messages(long U, long urlType, const QString& urlText, const QString& redirect, long appType,
                       const QString& appText);

Sql Get_Program_Mode();
Sql Set_Program_Mode(long mode);
Sql Get_Client_Options();
Sql Set_Client_Options(long options);
Sql Get_Password();
Sql Set_Password(const QString& text);
Sql Check_Password(const QString& text);
Sql Get_Remote_Settings();
Sql Set_Remote_Settings(long mode, const QString& server, const QString& port);

Sql Set_Internet_On_Off(long value, long U);
Sql Set_Schedule_For(long value, long U);
Sql Get_Internet_On_Off(long C, long U);
Sql Get_Schedule_For(long C, long U);

Sql Get_List_Items(const QString& column, const QString& tableName, long C, long U);
Sql Update_List_Item(const QString& column, const QString& tableName, const QString& oldValue,
                     const QString& newValue, long C, long U);
Sql Remove_User_Rows(long U, const QString& tableName);
Sql Get_Bypass_Exes(long C, long U);

Sql Add_Port(long port, long filterType, const QString& protocol, long C, long U);
Sql Get_Ports(long kind, long C, long U);

Sql Add_Schedule_Insert(long family, long subType, long dwm, long weekdays, long months,
                        const QString& fromTime, const QString& toTime, long C, long U);
Sql Add_Schedule_Lookup(long family, long subType, long dwm, long weekdays, long months,
                        const QString& fromTime, const QString& toTime, long C, long U);
Sql Update_Schedule(long id, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                    const QString& toTime);
Sql Get_Schedules(long family, long C, long U);
Sql Remove_Schedule(long id);
Sql Remove_User_Schedules(long family, long U);

Sql Add_Exception_User_Insert(const QString& name);
Sql Add_Exception_User_Lookup(const QString& name);
Sql Remove_Exception_User(long id);
Sql Rename_Exception_User(const QString& name, long id);
Sql Get_Exception_Users();
Sql Is_New_Exception_User(const QString& name);

Sql Add_List_Item(const QString& column, const QString& tableName, const QString& value, long C, long U);
Sql Remove_List_Item(const QString& column, const QString& tableName, const QString& value, long C, long U);
Sql Add_Bypass_Exe(long C, long U, const QString& name);
Sql Remove_Bypass_Exe(long C, long U, const QString& name);

Sql Load_Bits(BitColumn column, long C, long U);
Sql Save_Bits(BitColumn column, long C, long U, long bits);

} // namespace hv::stmt
