#include "host/flow/LuaSandbox.h"

#include <cmath>
#include <cstdlib>
#include <ctime>

#include <fmt/format.h>
#include <lua5.4/lua.hpp>

#include "host/flow/LuaLibrary.h"

namespace ombrelune {

namespace {

// Keys of the Lua registry: their addresses count.
char const kLibrary = 0, kChunk = 0;

constexpr char const* kChunkName = "=expression";

constexpr int kStepsBetweenLooks = 1000;

double ThreadSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

} // namespace

struct LuaSandbox::Calls {
    struct Setup {
        std::string chunk;
        std::vector<Tool> const* tools;
        FusionDoc const* document;
    };

    static LuaSandbox& Self(lua_State* lua) { return **static_cast<LuaSandbox**>(lua_getextraspace(lua)); }

    static void StopLongRun(lua_State* lua, lua_Debug*)
    {
        LuaSandbox& self = Self(lua);
        if ((self.steps_ += kStepsBetweenLooks) >= kMostSteps)
            luaL_error(lua, "takes more than %d steps; is there a loop without an end?", kMostSteps);
        if (ThreadSeconds() > self.end_)
            luaL_error(lua, "takes more than %d seconds", static_cast<int>(kMostSeconds));
    }

    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize)
    {
        auto& sandbox = *static_cast<LuaSandbox*>(self);
        std::size_t const before = block ? oldSize : 0; // without a block it is a kind of value
        if (!block && oldSize == LUA_TSTRING && newSize > kMostText + 64) { // with Lua's header
            sandbox.textTooLong_ = true;
            return nullptr;
        }
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
        AddLibrary(lua, library, setup.document);
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
        double const start = ThreadSeconds();
        self.read_ = self.reader_->Read(static_cast<int>(lua_tointeger(lua, -1)), time);
        self.end_ += ThreadSeconds() - start;
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
    steps_ = 0;
    end_ = ThreadSeconds() + kMostSeconds;
    lua_sethook(lua_, Calls::StopLongRun, LUA_MASKCOUNT, kStepsBetweenLooks);
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
    std::string message = textTooLong_ ? fmt::format("makes a text longer than {} KiB", kMostText >> 10)
                                       : fmt::format("needs more memory than {} KiB", kMostMemory >> 10);
    textTooLong_ = false;
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
