// These functions write amounts, dates and times for all pages, with the digits of the locale.

function number(value, locale, decimals) {
    return Number(value).toLocaleString(locale, "f", decimals || 0)
}

// A number without separators, such as that of a year.
function digits(value, locale) {
    return String(value).replace(/[0-9]/g, digit => number(digit, locale))
}

function twoDigits(value, locale) {
    return digits(value < 10 ? "0" + value : value, locale)
}

// An offset from UTC, such as "+05:30". The mark keeps the sign in front where text runs from right
// to left.
function offset(minutes, locale) {
    const size = Math.abs(minutes)
    return "\u200e" + (minutes < 0 ? "-" : "+") + twoDigits(Math.floor(size / 60), locale) + ":" + twoDigits(size % 60, locale)
}

// An offset such as "UTC+05:30" with the digits of the locale.
function clockOffset(text, locale) {
    return "\u200e" + digits(text, locale)
}

// A text whose paths are not broken after a slash.
function unbroken(text) {
    return text.replace(/\//g, "/\u2060")
}

function bytes(count, locale) {
    if (count < 1e3)
        return qsTr("%1 B").arg(number(count, locale))
    if (count < 1e6)
        return qsTr("%1 kB").arg(number(count / 1e3, locale, 1))
    if (count < 1e9)
        return qsTr("%1 MB").arg(number(count / 1e6, locale, 1))
    return qsTr("%1 GB").arg(number(count / 1e9, locale, 1))
}

function day(time, locale) {
    return time.toLocaleDateString(locale, Locale.ShortFormat)
}

function longDay(time, locale) {
    return time.toLocaleDateString(locale, Locale.LongFormat)
}

// The hour and the minute as the locale has them.
function shortTime(time, locale) {
    return time.toLocaleTimeString(locale, Locale.ShortFormat)
}

// A time of day with seconds, in which lines of a log differ.
function timeOfDay(time, locale) {
    return time.toLocaleTimeString(locale, "HH:mm:ss")
}

// A time of day with milliseconds.
function exactTime(time, locale) {
    return time.toLocaleTimeString(locale, "HH:mm:ss.zzz")
}

function moment(time, locale) {
    return time.toLocaleString(locale, Locale.ShortFormat)
}
