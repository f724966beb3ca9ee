#include "host/flow/LuaLibrary.h"

#include <cmath>
#include <cstring>
#include <initializer_list>

#include <lua5.4/lua.hpp>

#include "host/flow/LuaSandbox.h"
#include "host/graph/FusionDoc.h"

namespace ombrelune {

void PushNumber(lua_State* lua, double number)
{
    constexpr double kWhole = 9007199254740992.0; // 2^53
    bool const isWhole = number == std::floor(number) && std::abs(number) < kWhole;
    if (isWhole && !(number == 0.0 && std::signbit(number)))
        lua_pushinteger(lua, static_cast<lua_Integer>(number));
    else lua_pushnumber(lua, number);
}

void SetNumber(lua_State* lua, char const* name, double number)
{
    PushNumber(lua, number);
    lua_setfield(lua, -2, name);
}

int Refuse(lua_State* lua)
{
    if (lua_type(lua, 2) != LUA_TSTRING) return luaL_error(lua, "only tables of your own can be changed");
    return luaL_error(lua, "'%s' cannot be set; write 'local %s'", lua_tostring(lua, 2),
                      lua_tostring(lua, 2));
}

void MakeReadOnly(lua_State* lua)
{
    lua_newtable(lua);
    lua_newtable(lua);
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pushcfunction(lua, Refuse);
    lua_setfield(lua, -2, "__newindex");
    lua_setmetatable(lua, -2);
    lua_remove(lua, -2);
}

namespace {

/// Anything whose text is no address.
void CheckPrintable(lua_State* lua, int index)
{
    int const type = lua_type(lua, index);
    bool const isPlain =
        type == LUA_TNIL || type == LUA_TBOOLEAN || type == LUA_TNUMBER || type == LUA_TSTRING;
    luaL_argcheck(lua, isPlain, index, "a number or a text expected");
}

int ToString(lua_State* lua)
{
    CheckPrintable(lua, 1);
    luaL_tolstring(lua, 1, nullptr);
    return 1;
}

/// string.format without %p; the library's own is the upvalue.
int Format(lua_State* lua)
{
    int const count = lua_gettop(lua);
    for (char const* c = luaL_checkstring(lua, 1); (c = std::strchr(c, '%')) != nullptr; ++c) {
        c += 1 + std::strspn(c + 1, "-+ #0123456789.");
        if (*c == 'p') return luaL_error(lua, "'%%p' is not known here");
        if (*c == '\0') break;
    }
    for (int i = 2; i <= count; ++i) CheckPrintable(lua, i);
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, count, 1);
    return 1;
}

/// string.rep, whose library form repeats an empty text as often as it is told.
int Repeat(lua_State* lua)
{
    std::size_t length = 0;
    char const* const text = luaL_checklstring(lua, 1, &length);
    lua_Integer const count = luaL_checkinteger(lua, 2);
    if (length == 0 || count <= 0) {
        lua_pushliteral(lua, "");
        return 1;
    }
    if (static_cast<std::size_t>(count) > LuaSandbox::kMostText / length)
        return luaL_error(lua, "the repeated text is too long");
    luaL_Buffer buffer;
    luaL_buffinit(lua, &buffer);
    for (lua_Integer i = 0; i < count; ++i) luaL_addlstring(&buffer, text, length);
    luaL_pushresult(&buffer);
    return 1;
}

int MakePoint(lua_State* lua)
{
    luaL_checknumber(lua, 1);
    luaL_checknumber(lua, 2);
    lua_settop(lua, 2);
    lua_createtable(lua, 0, 2);
    lua_insert(lua, 1);
    lua_setfield(lua, 1, "Y");
    lua_setfield(lua, 1, "X");
    return 1;
}

/// Copies members from the table on top of the stack to the one at the index.
void CopyFields(lua_State* lua, std::initializer_list<char const*> names, int to)
{
    for (char const* name : names) {
        lua_getfield(lua, -1, name);
        lua_setfield(lua, to, name);
    }
}

void AddBasics(lua_State* lua, int library)
{
    luaL_requiref(lua, "_G", luaopen_base, 0);
    CopyFields(lua, {"ipairs", "select", "tonumber", "type"}, library);
    lua_pop(lua, 1);
    lua_pushcfunction(lua, ToString);
    lua_setfield(lua, library, "tostring");
    lua_pushcfunction(lua, MakePoint);
    lua_setfield(lua, library, "Point");
}

void AddMath(lua_State* lua, int library)
{
    luaL_requiref(lua, "math", luaopen_math, 0);
    for (char const* name : {"random", "randomseed"}) {
        lua_pushnil(lua);
        lua_setfield(lua, -2, name);
    }
    lua_pushnil(lua);
    while (lua_next(lua, -2)) {
        lua_pushvalue(lua, -2);
        lua_insert(lua, -2);
        lua_settable(lua, library);
    }
    MakeReadOnly(lua);
    lua_setfield(lua, library, "math");
}

void AddStrings(lua_State* lua, int library)
{
    // Patterns are left out: one short pattern can keep a matcher busy for years.
    luaL_requiref(lua, "string", luaopen_string, 0);
    lua_newtable(lua);
    int const strings = lua_gettop(lua);
    lua_pushvalue(lua, -2);
    CopyFields(lua, {"byte", "char", "len", "lower", "reverse", "sub", "upper"}, strings);
    lua_getfield(lua, -1, "format");
    lua_pushcclosure(lua, Format, 1);
    lua_setfield(lua, strings, "format");
    lua_pushcfunction(lua, Repeat);
    lua_setfield(lua, strings, "rep");
    lua_settop(lua, strings);
    MakeReadOnly(lua);
    lua_pushliteral(lua, "");
    lua_getmetatable(lua, -1); // of all texts
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 2);
    lua_setfield(lua, library, "string");
    lua_pop(lua, 1);
}

void AddDocument(lua_State* lua, int library, FusionDoc const& document)
{
    lua_newtable(lua);
    SetNumber(lua, "GlobalStart", document.globalStart);
    SetNumber(lua, "GlobalEnd", document.globalEnd);
    SetNumber(lua, "RenderStart", document.renderStart);
    SetNumber(lua, "RenderEnd", document.renderEnd);
    lua_newtable(lua);
    SetNumber(lua, "Width", document.format.width);
    SetNumber(lua, "Height", document.format.height);
    SetNumber(lua, "Rate", document.format.rate);
    SetNumber(lua, "Depth", document.format.depth);
    SetNumber(lua, "AspectX", document.format.xScale);
    SetNumber(lua, "AspectY", document.format.yScale);
    MakeReadOnly(lua);
    lua_setfield(lua, -2, "FrameFormat");
    MakeReadOnly(lua);
    lua_setfield(lua, library, "comp");
}

} // namespace

void AddLibrary(lua_State* lua, int library, FusionDoc const* document)
{
    AddMath(lua, library);
    AddBasics(lua, library); // type is the general one, not that of math
    AddStrings(lua, library);
    if (document) AddDocument(lua, library, *document);
    SetNumber(lua, "time", 0.0);
}

} // namespace ombrelune
