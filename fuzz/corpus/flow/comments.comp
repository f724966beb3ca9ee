

-- head
--[==[ block
   two ]==]

Composition -- odd
{ -- brace

  -- first
  a = 1, -- one
  b = --[[in]] 2 -- two
  , c = {1,2;3,--[[x]] 4}, d = { --[[only]] },

  -- above e

  e = "tab\tnl\n\0\0011\"\\", ["end"]=0x10, [ -- why
  -3.5] = -- because
   -0, [true]={},
  f = { g = 1, h = 2 --[[behind
  over lines]], i = 3 }


  -- last

  -- very last
} -- after


-- end
