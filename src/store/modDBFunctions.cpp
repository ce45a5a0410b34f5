#include "store/modDBFunctions.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "store/Statements.h"

#include <functional>
#include <initializer_list>

namespace hv {

namespace {

using stmt::BitColumn;

// The one body of every operation that owns its connection: path, open, run the statements in turn on
// that connection, let `read` take what it needs from the last result, close. A failed statement or a
// failed read (no row 1, a NULL, a text where a number belongs) is reported here with the current
// run-time error, after the store engine's own report of an SQL error. A store that cannot be opened
// has been reported by Db_Open already.
bool Standard_Cycle(std::initializer_list<Sql> statements, ResultTable& table, long& rows,
                    const std::function<void()>& read = {}) {
    const int handle = Db_Open(Get_Db_Path());
    if (handle == 0)
        return false;
    bool result = false;
    try {
        bool ran = true;
        for (const Sql& sql : statements) {
            if (!Db_Exec(handle, sql, table, rows)) {
                ran = false;
                break;
            }
        }
        if (ran) {
            if (read)
                read();
            result = true;
        } else {
            Report_Error();
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
        result = false;
    }
    Db_Close(handle);
    return result;
}

// A statement whose result nobody looks at.
bool Run(const Sql& sql) {
    ResultTable table;
    long rows = 0;
    return Standard_Cycle({sql}, table, rows);
}

// A statement whose first data row is read by `read(table)`.
bool Read_Row(const Sql& sql, const std::function<void(const ResultTable&)>& read) {
    ResultTable table;
    long rows = 0;
    return Standard_Cycle({sql}, table, rows, [&] { read(table); });
}


// The batch operations: the caller's connection and transaction, no open and no close.
bool On_Handle(int handle, const Sql& sql, ResultTable& table) {
    if (handle == 0)
        return false;
    long rows = 0;
    try {
        if (Db_Exec(handle, sql, table, rows))
            return true;
        Report_Error();
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
    return false;
}

bool Read_Bits(BitColumn column, long C, long U, long& bits) {
    return Read_Row(stmt::Load_Bits(column, C, U), [&](const ResultTable& t) { bits = t.Long(1, 0); });
}

bool Write_Bits(BitColumn column, long C, long U, long bits) {
    return Run(stmt::Save_Bits(column, C, U, bits));
}

void Set_Bit(BitColumn column, bool on, long bit, long C, long U) {
    // The read is not checked: a failed read leaves 0 here and the write below stores only `bit`.
    long bits = 0;
    Read_Bits(column, C, U, bits);
    if (on)
        bits = bits | bit;
    else
        bits = bits & ~bit;
    Write_Bits(column, C, U, bits);
}

} // namespace

// ---- users

bool Get_Users(long& rows, ResultTable& table) {
    return Run_Query(stmt::Get_Users(), rows, table);
}

bool Get_User_Id(long& id, const QString& name) {
    return Read_Row(stmt::Get_User_Id(name), [&](const ResultTable& t) { id = t.Long(1, 0); });
}

bool Get_User_Name(long /*C*/, long U, QString& name) {
    ResultTable table;
    long rows = 0;
    // The one read that looks at the count first: an unknown id is a success with the name untouched.
    return Standard_Cycle({stmt::Get_User_Name(U)}, table, rows, [&] {
        if (rows > 0)
            name = table.Text(1, 0);
    });
}

bool Add_User(const QString& name, long& id) {
    ResultTable table;
    long rows = 0;
    return Standard_Cycle({stmt::Add_User_Insert(name), stmt::Add_User_Lookup(name)}, table, rows,
                          [&] { id = table.Long(1, 0); });
}

bool Remove_User(long /*C*/, long U) {
    return Run(stmt::Remove_User(U));
}

bool Rename_User(const QString& name, long U) {
    return Run(stmt::Rename_User(name, U));
}

// ---- device lock

bool Get_Device_Lock(long C, long U, long& lock) {
    return Read_Row(stmt::Get_Device_Lock(C, U), [&](const ResultTable& t) { lock = t.Long(1, 0); });
}

bool Set_Device_Lock(long C, long U, long lock) {
    return Run(stmt::Set_Device_Lock(C, U, lock));
}

bool Copy_Device_Lock(long lock, long /*C*/, long U) {
    return Run(stmt::Copy_Device_Lock(lock, U));
}

// ---- messages

bool Get_App_Message(long C, long U, long& type, QString& text) {
    return Read_Row(stmt::Get_App_Message(C, U), [&](const ResultTable& t) {
        type = t.Long(1, 0);
        text = t.Text(1, 1);
    });
}

bool Set_App_Message(long C, long U, long type, const QString& text) {
    return Run(stmt::Set_App_Message(C, U, type, text));
}

bool Get_Url_Message(long C, long U, long& type, QString& text, QString& redirect) {
    return Read_Row(stmt::Get_Url_Message(C, U), [&](const ResultTable& t) {
        type = t.Long(1, 0);
        text = t.Text(1, 1);
        redirect = t.Text(1, 2);
    });
}

bool Set_Url_Message(long C, long U, long type, const QString& text, const QString& redirect) {
    return Run(stmt::Set_Url_Message(C, U, type, text, redirect));
}

bool Get_User_Messages(long U, ResultTable& table, long& rows) {
    return Run_Query(stmt::Get_User_Messages(U), rows, table);
}

bool Copy_User_Messages(long U, long urlType, const QString& urlText, const QString& redirect, long appType,
                        const QString& appText) {
    return Run(stmt::Copy_User_Messages(U, urlType, urlText, redirect, appType, appText));
}

// ---- installation settings

bool Get_Program_Mode(long& mode) {
    return Read_Row(stmt::Get_Program_Mode(), [&](const ResultTable& t) { mode = t.Long(1, 0); });
}

bool Set_Program_Mode(long mode) {
    return Run(stmt::Set_Program_Mode(mode));
}

bool Get_Client_Options(long& options) {
    return Read_Row(stmt::Get_Client_Options(), [&](const ResultTable& t) { options = t.Long(1, 0); });
}

bool Set_Client_Options(long options) {
    return Run(stmt::Set_Client_Options(options));
}

bool Get_Password(QString& text) {
    return Read_Row(stmt::Get_Password(), [&](const ResultTable& t) { text = t.Text(1, 0); });
}

bool Set_Password(const QString& text) {
    return Run(stmt::Set_Password(text));
}

bool Check_Password(const QString& text) {
    bool match = false;
    Read_Row(stmt::Check_Password(text), [&](const ResultTable& t) { match = t.Long(1, 0) >= 1; });
    return match;
}

bool Set_Remote_Settings(long mode, const QString& server, const QString& port) {
    return Run(stmt::Set_Remote_Settings(mode, server, port));
}

// ---- internet mode

bool Set_Internet_On_Off(long value, long /*C*/, long U) {
    return Run(stmt::Set_Internet_On_Off(value, U));
}

bool Set_Schedule_For(long value, long /*C*/, long U) {
    return Run(stmt::Set_Schedule_For(value, U));
}

bool Get_Internet_On_Off(long C, long U, long& value) {
    return Read_Row(stmt::Get_Internet_On_Off(C, U), [&](const ResultTable& t) { value = t.Long(1, 0); });
}

bool Get_Schedule_For(long C, long U, long& value) {
    return Read_Row(stmt::Get_Schedule_For(C, U), [&](const ResultTable& t) { value = t.Long(1, 0); });
}

// ---- rule lists

bool Get_List_Items(const QString& column, const QString& tableName, long C, long U, ResultTable& table,
                    long& rows) {
    return Run_Query(stmt::Get_List_Items(column, tableName, C, U), rows, table);
}

bool Update_List_Item(const QString& column, const QString& tableName, const QString& oldValue,
                      const QString& newValue, long C, long U) {
    return Run(stmt::Update_List_Item(column, tableName, oldValue, newValue, C, U));
}

bool Remove_User_Rows(long U, const QString& tableName) {
    return Run(stmt::Remove_User_Rows(U, tableName));
}

bool Get_Bypass_Exes(long C, long U, ResultTable& table) {
    long rows = 0;
    return Run_Query(stmt::Get_Bypass_Exes(C, U), rows, table);
}

// ---- ports

bool Add_Port(long port, long filterType, const QString& protocol, long C, long U) {
    return Run(stmt::Add_Port(port, filterType, protocol, C, U));
}

bool Get_Ports(long kind, long C, long U, ResultTable& table, long& rows) {
    return Run_Query(stmt::Get_Ports(kind, C, U), rows, table);
}

// ---- schedules

bool Add_Schedule(long family, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                  const QString& toTime, long C, long U, ResultTable& table) {
    // The store gives the key; the new row is found again by its values on the same connection, and the
    // caller reads SCH_ID at (1,0).
    long rows = 0;
    return Standard_Cycle(
        {stmt::Add_Schedule_Insert(family, subType, dwm, weekdays, months, fromTime, toTime, C, U),
         stmt::Add_Schedule_Lookup(family, subType, dwm, weekdays, months, fromTime, toTime, C, U)},
        table, rows);
}

bool Update_Schedule(long id, long subType, long dwm, long weekdays, long months, const QString& fromTime,
                     const QString& toTime) {
    return Run(stmt::Update_Schedule(id, subType, dwm, weekdays, months, fromTime, toTime));
}

bool Get_Schedules(long family, long C, long U, ResultTable& table, long& rows) {
    return Run_Query(stmt::Get_Schedules(family, C, U), rows, table);
}

bool Remove_Schedule(long id) {
    return Run(stmt::Remove_Schedule(id));
}

bool Remove_User_Schedules(long family, long U) {
    return Run(stmt::Remove_User_Schedules(family, U));
}

// ---- exception users

bool Add_Exception_User(const QString& name, long& id) {
    ResultTable table;
    long rows = 0;
    return Standard_Cycle({stmt::Add_Exception_User_Insert(name), stmt::Add_Exception_User_Lookup(name)},
                          table, rows, [&] { id = table.Long(1, 0); });
}

bool Remove_Exception_User(long /*ignored*/, long id) {
    return Run(stmt::Remove_Exception_User(id));
}

bool Rename_Exception_User(const QString& name, long id) {
    return Run(stmt::Rename_Exception_User(name, id));
}

bool Get_Exception_Users(long& rows, ResultTable& table) {
    return Run_Query(stmt::Get_Exception_Users(), rows, table);
}

bool Is_New_Exception_User(const QString& name) {
    bool isNew = false;
    Read_Row(stmt::Is_New_Exception_User(name), [&](const ResultTable& t) { isNew = t.Long(1, 0) == 0; });
    return isNew;
}

// ---- batch operations

bool Add_List_Item(int handle, ResultTable& table, const QString& column, const QString& tableName,
                   const QString& value, long C, long U) {
    return On_Handle(handle, stmt::Add_List_Item(column, tableName, value, C, U), table);
}

bool Remove_List_Item(int handle, ResultTable& table, const QString& column, const QString& tableName,
                      const QString& value, long C, long U) {
    return On_Handle(handle, stmt::Remove_List_Item(column, tableName, value, C, U), table);
}

bool Add_Bypass_Exe(int handle, ResultTable& table, long C, long U, const QString& name) {
    return On_Handle(handle, stmt::Add_Bypass_Exe(C, U, name), table);
}

bool Remove_Bypass_Exe(int handle, ResultTable& table, long C, long U, const QString& name) {
    return On_Handle(handle, stmt::Remove_Bypass_Exe(C, U, name), table);
}

bool Add_User(int handle, ResultTable& table, const QString& name, long& id) {
    if (!On_Handle(handle, stmt::Add_User_Insert(name), table) ||
        !On_Handle(handle, stmt::Add_User_Lookup(name), table))
        return false;
    try {
        id = long(table.Long(1, 0));
        return true;
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
    return false;
}

// ---- bit columns

bool Load_Feature_Bits(long C, long U, long& bits) {
    return Read_Bits(BitColumn::Feature, C, U, bits);
}
bool Save_Feature_Bits(long C, long U, long bits) {
    return Write_Bits(BitColumn::Feature, C, U, bits);
}

bool Is_Feature_Bit_Set(long C, long U, long bit) {
    long bits = 0;
    Read_Bits(BitColumn::Feature, C, U, bits);
    return (bits & bit) != 0;
}

void Set_Feature_Bit(bool on, long bit, long C, long U) {
    Set_Bit(BitColumn::Feature, on, bit, C, U);
}

bool Load_Status_Bits(long C, long U, long& bits) {
    return Read_Bits(BitColumn::Status, C, U, bits);
}
bool Save_Status_Bits(long C, long U, long bits) {
    return Write_Bits(BitColumn::Status, C, U, bits);
}
void Set_Status_Bit(bool on, long bit, long C, long U) {
    Set_Bit(BitColumn::Status, on, bit, C, U);
}

} // namespace hv
