-- Engine simulation script left neutral: the loco's own script now sets the engine
-- speed the sounds follow, so the simulation leaves it alone.

function Initialise()
end

function Update(interval)
end
