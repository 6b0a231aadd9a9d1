# Makes the registry file of the sample studio from studio.txt.
BEGIN {
    FS = "[ ]*[|][ ]*"
    ORS = "\r\n"
    for (i = 32; i < 127; i++) code_of[sprintf("%c", i)] = i
    maker_key = "HKEY_CURRENT_USER\\Software\\Corvane Music Software\\"
    machine_key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Corvane Music Software\\"
    inventory = maker_key "Corvane VST\\Inventory"
    data_root = "C:\\ProgramData\\Corvane Studio"
    tools = "C:\\Program Files\\Corvane Studio\\Tools\\"
    time = "hex:00,40,8f,a1,5e,d4,da,01"

    print "Windows Registry Editor Version 5.00"
    key("HKEY_CURRENT_USER\\Environment")
    text("CorvaneAppDataRoot", data_root)
    key(maker_key "Corvane VST")
    text("VSTScanPath", file(tools "VstScanner.exe"))
    key(maker_key "Corvane Plugin Manager")
    text("MenuLayoutsPath", data_root "\\Menu Layouts")
    key(machine_key "Corvane VST Adapter")
    text("VSTConfigWizardPath", file(tools "AdapterWizard.exe"))
    key(inventory)
    value("lastUpdateTime", time)
}

/^#/ || !NF { next }
$1 ~ /^VST/ { vst($1 ~ /VST3/, $1 ~ /i$/, $2, $3, $4, $5) }
$1 == "QTZ" { server($1, $2, $3, $4, machine_key "MIDI Filters\\", "") }
$1 == "SURFACE" { server($1, $2, $3, $4, "HKEY_CLASSES_ROOT\\CorvaneControlSurfaces\\", "Description") }
$1 == "PRESET" { preset($2); value($3, bytes($4)) }
$1 == "FILE" { preset($2); text($3, file(data_root "\\Shared Presets\\" clsid_of($2) "\\" $3)) }
$1 == "EXCLUDED" { key(maker_key "ExcludedPlugIns\\" clsid_of($2)); text("", $3) }

# What the registrar is to lay down as placeholder files.
END {
    key("HKEY_CURRENT_USER\\Software\\Corvane Sample Studio\\Files")
    for (i = 1; i <= files; i++) text(i, path[i])
}

function vst(vst3, synth, code, name, maker, notes,    x64, base, plug, md5) {
    x64 = notes !~ /x86/
    base = "C:\\Program Files" (x64 ? "" : " (x86)") "\\Common Files\\" (vst3 ? "VST3\\" : "VST2\\") maker "\\"
    # The two bitnesses share all but the last group, as files of the same unique id do.
    plug = id(code, vst3 ? "5633-4300" : "5653-5400", x64 ? "64" : "32")
    md5 = vst3 ? plug : id(code, "4D44-3500", x64 ? "64" : "32")
    if (x64 || !(code in clsid)) clsid[code] = plug
    root[code] = "ActiveMovie"

    key(inventory "\\" code (x64 ? "-x64" : "-x86"))
    text("FullPath", file(base (match(notes, /file=/) ? substr(notes, RSTART + 5) : name) (vst3 ? ".vst3" : ".dll")))
    text("FullName", name)
    text("Vendor", maker)
    text("clsidPlug", plug)
    text("clsidPlugMD5", md5)
    value("uniqueId", "dword:" hex(code, ""))
    value("isVst", flag(!vst3))
    value("isVst3", flag(vst3))
    value("isX64", flag(x64))
    value("isShell", flag(notes ~ /shell/))
    value("isShellRoot", flag(notes ~ /shell-root/))
    value("isBad", flag(notes ~ /bad/))
    value("registerAsSynth", flag(synth))
    value("addVstPrefix", flag(0))
    value("lastUpdateTime", time)
}

function server(kind, code, name, maker, list, name_value,    library) {
    clsid[code] = id(code, kind == "QTZ" ? "5154-5A00" : "4353-4600", "64")
    root[code] = kind == "QTZ" ? "MIDI Filters" : "ControlSurfaces"
    library = "C:\\Program Files\\Common Files\\Corvane Studio\\" maker "\\" name ".dll"
    key(list clsid[code])
    text(name_value, name)
    key("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\" clsid[code])
    text("", name)
    key("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\" clsid[code] "\\InprocServer32")
    text("", file(library))
}

function preset(code) {
    key(maker_key (code ~ /^[{]/ ? "ActiveMovie" : root[code]) "\\Presets\\" clsid_of(code))
}

function clsid_of(code) {
    if (code ~ /^[{]/) return code
    if (code in clsid) return clsid[code]
    print "studio.txt:" NR ": unknown code " code > "/dev/stderr"
    exit 1
}

function id(code, kind, bits) { return "{" hex(code, "") "-" kind "-8A01-5A3C1E90B7" bits "}" }

function hex(s, separator,    i, result) {
    for (i = 1; i <= length(s); i++) result = result (i > 1 ? separator : "") sprintf("%02X", code_of[substr(s, i, 1)])
    return result
}

function bytes(s) { return "hex:" hex(s, ",") }
function flag(on) { return "dword:" (on ? "00000001" : "00000000") }
function key(name) { print ""; print "[" name "]" }
function value(name, data) { print (name == "" ? "@" : "\"" name "\"") "=" data }
function text(name, s) { gsub(/\\/, "&&", s); value(name, "\"" s "\"") }

function file(name) {
    if (!(name in known)) path[++files] = name
    known[name] = 1
    return name
}
