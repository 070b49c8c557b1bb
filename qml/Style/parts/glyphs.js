.pragma library

// The places of the icons in the font Material Design Icons, of which only those in use are listed.
var glyphs = {
    "alert": "\uF026",
    "alert-circle": "\uF028",
    "archive": "\uF03C",
    "arrow-down": "\uF045",
    "arrow-left": "\uF04D",
    "arrow-right": "\uF054",
    "arrow-up": "\uF05D",
    "bug": "\uF0E4",
    "calendar": "\uF0ED",
    "calendar-text": "\uF0F5",
    "check": "\uF12C",
    "check-circle": "\uF5E0",
    "chevron-down": "\uF140",
    "chevron-left": "\uF141",
    "chevron-right": "\uF142",
    "chevron-up": "\uF143",
    "clock": "\uF150",
    "close": "\uF156",
    "close-circle": "\uF159",
    "content-save": "\uF193",
    "delete": "\uF1C0",
    "download": "\uF1DA",
    "earth": "\uF1E7",
    "file": "\uF214",
    "file-document": "\uF219",
    "filter-variant": "\uF236",
    "folder": "\uF24B",
    "folder-outline": "\uF256",
    "fullscreen": "\uF293",
    "harddisk": "\uF2CA",
    "heart-pulse": "\uF5F6",
    "history": "\uF2DA",
    "information-outline": "\uF2FD",
    "linux": "\uF33D",
    "lock-open-outline": "\uF340",
    "lock-outline": "\uF341",
    "magnify": "\uF349",
    "magnify-minus": "\uF34A",
    "magnify-plus": "\uF34B",
    "minus": "\uF374",
    "package-variant-closed": "\uF3D7",
    "page-first": "\uF600",
    "page-last": "\uF601",
    "pause": "\uF3E4",
    "pencil": "\uF3EB",
    "play": "\uF40A",
    "plus": "\uF415",
    "power": "\uF425",
    "server": "\uF48B",
    "sitemap": "\uF4AA",
    "timer-sand": "\uF51F",
    "tune": "\uF62E",
    "undo": "\uF54C",
    "usb": "\uF553",
    "view-dashboard": "\uF56E",
    "wrench": "\uF5B7"
}

function named(name) {
    if (name && !glyphs[name])
        console.warn("There is no icon named " + name)
    return glyphs[name] || ""
}

// An icon that points along the text points the other way where text runs from right to left.
function glyph(name, mirrored) {
    if (!mirrored)
        return named(name)
    return named(name.replace(/left$|right$|first$|last$/, side => {
        return { left: "right", right: "left", first: "last", last: "first" }[side]
    }))
}
