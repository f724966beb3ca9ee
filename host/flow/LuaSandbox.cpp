#include "host/flow/LuaSandbox.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include <fmt/format.h>
#include <lua5.4/lua.hpp>

#include "host/graph/FusionDoc.h"

namespace ombrelune {

namespace {

// Keys of the Lua registry: their addresses count.
char const kLibrary = 0, kChunk = 0;

constexpr char const* kChunkName = "=expression";

/// Whole numbers go in as integers, so that a text made of one has no ".0".
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

/// Wraps the table on top of the stack into an empty one that reads it and cannot be written: nothing may
/// stay behind after a run.
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
    if (static_cast<std::size_t>(count) > LuaSandbox::kMostMemory / length)
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

void StopLongRun(lua_State* lua, lua_Debug*)
{
    luaL_error(lua, "takes more than %d steps; is there a loop without an end?", LuaSandbox::kMostSteps);
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

struct LuaSandbox::Calls {
    struct Setup {
        std::string chunk;
        std::vector<Tool> const* tools;
        FusionDoc const* document;
    };

    static LuaSandbox& Self(lua_State* lua) { return **static_cast<LuaSandbox**>(lua_getextraspace(lua)); }

    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize)
    {
        auto& sandbox = *static_cast<LuaSandbox*>(self);
        std::size_t const before = block ? oldSize : 0; // without a block it is a hint
        if (newSize == 0) {
            std::free(block);
            sandbox.memory_ -= before;
            return nullptr;
        }
        if (newSize > before) {
            if (sandbox.memory_ + (newSize - before) > kMostMemory) return nullptr;
            if (sandbox.traffic_ + newSize > kMostTraffic) return nullptr;
        }
        void* const moved = std::realloc(block, newSize);
        if (!moved) return newSize <= before ? block : nullptr; // Lua relies on shrinking
        sandbox.memory_ += newSize - before;
        if (newSize > before) sandbox.traffic_ += newSize;
        return moved;
    }

    static int Prepare(lua_State* lua)
    {
        auto const& setup = *static_cast<Setup const*>(lua_touserdata(lua, 1));
        lua_newtable(lua);
        int const library = lua_gettop(lua);
        AddMath(lua, library);
        AddBasics(lua, library); // type is the general one, not that of math
        AddStrings(lua, library);
        if (setup.document) AddDocument(lua, library, *setup.document);
        SetNumber(lua, "time", 0.0);
        for (Tool const& tool : *setup.tools) AddTool(lua, library, tool);
        lua_pushvalue(lua, library);
        lua_rawsetp(lua, LUA_REGISTRYINDEX, &kLibrary);

        // As text only: made-up byte code can do anything.
        if (luaL_loadbufferx(lua, setup.chunk.data(), setup.chunk.size(), kChunkName, "t") != LUA_OK)
            return lua_error(lua);
        lua_insert(lua, library);
        MakeReadOnly(lua);
        lua_setupvalue(lua, library, 1); // the chunk's _ENV
        lua_rawsetp(lua, LUA_REGISTRYINDEX, &kChunk);
        return 0;
    }

    static void AddTool(lua_State* lua, int library, Tool const& tool)
    {
        lua_newtable(lua); // stays empty
        lua_newtable(lua); // its metatable
        lua_newtable(lua); // members
        for (auto const& [name, number] : tool.members) {
            lua_pushinteger(lua, number);
            lua_setfield(lua, -2, name.c_str());
        }
        lua_pushvalue(lua, -1);
        lua_pushcclosure(lua, ReadAt, 1);
        lua_setfield(lua, -2, "GetValue");
        lua_pushcclosure(lua, ReadNow, 1);
        lua_setfield(lua, -2, "__index");
        lua_pushcfunction(lua, Refuse);
        lua_setfield(lua, -2, "__newindex");
        lua_setmetatable(lua, -2);
        lua_setfield(lua, library, tool.name.c_str());
    }

    /// Tool.Member
    static int ReadNow(lua_State* lua)
    {
        lua_settop(lua, 2);
        lua_gettable(lua, lua_upvalueindex(1));
        if (lua_isfunction(lua, -1)) return 1;
        return Read(lua, Self(lua).time_);
    }

    /// Tool:GetValue("Member", time)
    static int ReadAt(lua_State* lua)
    {
        double const time = luaL_optnumber(lua, 3, Self(lua).time_);
        if (!std::isfinite(time)) return luaL_error(lua, "the time of GetValue is not a finite number");
        lua_settop(lua, 2);
        lua_gettable(lua, lua_upvalueindex(1));
        return Read(lua, time);
    }

    static int Read(lua_State* lua, double time)
    {
        if (!lua_isinteger(lua, -1)) return luaL_error(lua, "there is no such member");
        LuaSandbox& self = Self(lua);
        self.read_ = self.reader_->Read(static_cast<int>(lua_tointeger(lua, -1)), time);
        if (self.read_.problem) return luaL_error(lua, "stopped");
        Parameter const* const value = self.read_.value.Get();
        if (auto const* number = dynamic_cast<Number const*>(value)) {
            PushNumber(lua, number->value);
        } else if (auto const* point = dynamic_cast<Point const*>(value)) {
            lua_createtable(lua, 0, 3);
            SetNumber(lua, "X", point->x);
            SetNumber(lua, "Y", point->y);
            SetNumber(lua, "Z", point->z);
        } else if (auto const* text = dynamic_cast<Text const*>(value)) {
            lua_pushlstring(lua, text->value.data(), text->value.size());
        } else if (auto const* id = dynamic_cast<IdParameter const*>(value)) {
            lua_pushstring(lua, id->value.Text().c_str());
        } else {
            return luaL_error(lua, "what is read is no number, point or text");
        }
        return 1;
    }

    /// Gives the chunk's result and, of a table, its first three numbers or its X, Y and Z.
    static int Call(lua_State* lua)
    {
        lua_rawgetp(lua, LUA_REGISTRYINDEX, &kLibrary);
        SetNumber(lua, "time", Self(lua).time_);
        lua_settop(lua, 0);
        lua_rawgetp(lua, LUA_REGISTRYINDEX, &kChunk);
        lua_call(lua, 0, 1);
        for (int i = 1; i <= 3; ++i) {
            if (!lua_istable(lua, 1)) {
                lua_pushnil(lua);
            } else if (lua_rawgeti(lua, 1, i) == LUA_TNIL) {
                lua_pop(lua, 1);
                lua_pushstring(lua, i == 1 ? "X" : i == 2 ? "Y" : "Z");
                lua_rawget(lua, 1);
            }
        }
        return 4;
    }
};

LuaSandbox::LuaSandbox(std::string const& text, std::vector<Tool> const& tools, FusionDoc const* document)
{
    lua_ = lua_newstate(Calls::Allocate, this);
    if (!lua_) {
        mistake_ = "there is no memory for it";
        return;
    }
    *static_cast<LuaSandbox**>(lua_getextraspace(lua_)) = this;
    // The statements keep the place of the ':', so that lines count as they do in the text.
    Calls::Setup setup{text.starts_with(':') ? " " + text.substr(1) : "return " + text, &tools, document};
    lua_pushcfunction(lua_, Calls::Prepare);
    lua_pushlightuserdata(lua_, &setup);
    if (int const status = lua_pcall(lua_, 1, 0, 0); status != LUA_OK) mistake_ = TakeMessage(status);
}

LuaSandbox::~LuaSandbox()
{
    if (lua_) lua_close(lua_);
}

std::vector<std::string> LuaSandbox::Names() const
{
    std::vector<std::string> names;
    if (!lua_) return names;
    if (lua_rawgetp(lua_, LUA_REGISTRYINDEX, &kLibrary) == LUA_TTABLE) {
        lua_pushnil(lua_);
        for (; lua_next(lua_, -2); lua_pop(lua_, 1)) names.emplace_back(lua_tostring(lua_, -2));
    }
    lua_settop(lua_, 0);
    return names;
}

LuaSandbox::Outcome LuaSandbox::Run(double time, Reader& reader)
{
    time_ = time;
    reader_ = &reader;
    read_ = {};
    traffic_ = 0;
    lua_sethook(lua_, StopLongRun, LUA_MASKCOUNT, kMostSteps);
    lua_pushcfunction(lua_, Calls::Call);
    int const status = lua_pcall(lua_, 0, 4, 0);
    Outcome outcome;
    outcome.problem = std::move(read_.problem);
    read_ = {};
    if (status != LUA_OK) {
        outcome.mistake = TakeMessage(status);
        return outcome;
    }
    // Nothing below allocates in Lua, which has no one to report to here.
    int const type = lua_type(lua_, 1);
    if (type == LUA_TNUMBER) {
        outcome.value = ScriptVal(lua_tonumber(lua_, 1));
    } else if (type == LUA_TBOOLEAN) {
        outcome.value = ScriptVal(lua_toboolean(lua_, 1) != 0);
    } else if (type == LUA_TSTRING) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(lua_, 1, &length);
        outcome.value = ScriptVal(std::string(text, length));
    } else if (type == LUA_TTABLE) {
        auto table = std::make_shared<ScriptTable>();
        for (int i = 2; i <= 4 && lua_type(lua_, i) == LUA_TNUMBER; ++i)
            table->entries.push_back({.value = ScriptVal(lua_tonumber(lua_, i))});
        outcome.value = ScriptVal(std::move(table));
    } else if (type != LUA_TNIL) {
        outcome.mistake = fmt::format("gives a {}", lua_typename(lua_, type));
    }
    lua_settop(lua_, 0);
    return outcome;
}

std::string LuaSandbox::TakeMessage(int status)
{
    char const* const text = status == LUA_ERRMEM ? nullptr : lua_tostring(lua_, -1);
    std::string message = fmt::format("needs more memory than {} KiB", kMostMemory >> 10);
    if (text) {
        message = text;
        // "expression:1: ..." is the chunk's name and line; the line matters in longer texts only.
        std::string const prefix = std::string(kChunkName + 1) + ":";
        std::size_t const end = message.find(": ", prefix.size());
        if (message.starts_with(prefix) && end != std::string::npos) {
            std::string const line = message.substr(prefix.size(), end - prefix.size());
            message = (line == "1" ? "" : "line " + line + ": ") + message.substr(end + 2);
        }
        for (char& c : message)
            if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    }
    lua_settop(lua_, 0);
    return message;
}

} // namespace ombrelune
