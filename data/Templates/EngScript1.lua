-- Diesel engine script: engine speed for the sounds, and the exhaust "aaaaaa".

-- Engine speed, as the sounds hear it: it settles towards what the throttle asks for,
-- no faster than an engine of this kind can run up or down.
local IDLE_RPM = 400
local FULL_RPM = 850
local RPM_PER_SECOND = 90

-- The exhaust: a thin haze at idle and on a steady load, thick while the engine
-- runs up.
local HAZE_RATE = 0.25
local SMOKE_RATE = 0.03
local HAZE_SHADE = 0.45
local SMOKE_SHADE = 0.12

local gRpm = IDLE_RPM

local function TargetRpm()
	local throttle = Call("GetControlValue", "Regulator", 0) or 0
	if throttle < 0 then throttle = 0 end
	if throttle > 1 then throttle = 1 end
	return IDLE_RPM + (FULL_RPM - IDLE_RPM) * throttle
end

local function SetExhaust(emitter, delta)
	if delta > 0 then
		Call(emitter .. ":SetEmitterRate", SMOKE_RATE)
		Call(emitter .. ":SetEmitterColour", SMOKE_SHADE, SMOKE_SHADE, SMOKE_SHADE)
	else
		Call(emitter .. ":SetEmitterRate", HAZE_RATE)
		Call(emitter .. ":SetEmitterColour", HAZE_SHADE, HAZE_SHADE, HAZE_SHADE)
	end
end

local function StepEngine(interval)
	local target = TargetRpm()
	local most = RPM_PER_SECOND * interval
	local delta = target - gRpm
	if delta > most then delta = most end
	if delta < -most then delta = -most end
	gRpm = gRpm + delta
	Call("SetControlValue", "RPM", 0, gRpm)
	if interval > 0 then
		Call("SetControlValue", "RPMDelta", 0, delta / interval)
	end
	return delta
end

function OnControlValueChange(name, index, value)
	Call("SetControlValue", name, index, value)
end

function Initialise()
	Call("aaaaaa:SetEmitterActive", 1)
	Call("BeginUpdate")
end

function Update(interval)
	SetExhaust("aaaaaa", StepEngine(interval))
end
