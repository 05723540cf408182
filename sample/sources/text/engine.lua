-- {{title}}: lamps and the cab's warning horn.

function Initialise()
	Call("BeginUpdate")
	gLampsOn = false
end

function OnControlValueChange(name, index, value)
	if name == "Headlights" then
		gLampsOn = value > 0.5
		Call("FrontLamp:Activate", gLampsOn and 1 or 0)
	end
	Call("*:SetControlValue", name, index, value)
end

function Update(time)
	if Call("*:GetControlValue", "Horn", 0) > 0.5 then
		Call("HornSound:Play")
	end
end
