#include "PageStyle.h"

QByteArray PageStyle::base() {
    return QByteArrayLiteral(
        ":root{color-scheme:light dark;--paper:#faf8f3;--ink:#1b1a17;--dim:#6a665d;--line:#d9d4c7;"
        "--warn:#a3240f}"
        "@media(prefers-color-scheme:dark){:root{--paper:#171613;--ink:#ece8de;--dim:#a09a8c;"
        "--line:#3a372f;--warn:#ff8a70}}"
        "body{margin:0;background:var(--paper);color:var(--ink);"
        "font:1.125rem/1.6 Georgia,\"Noto Serif\",serif}"
        "main{max-width:42rem;margin:0 auto;padding:3rem 1.5rem 5rem}"
        "h1,h2{font-family:system-ui,sans-serif;line-height:1.15;text-wrap:balance}"
        "h1{font-size:2.4rem;margin:.5rem 0 1rem}"
        ".label,small{font-family:ui-monospace,monospace;font-size:.8rem;color:var(--dim)}");
}
