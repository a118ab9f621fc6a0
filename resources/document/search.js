// Search in the pages. The index is a script of its own, which is loaded when it is asked for first: a page that was
// opened from a file may load scripts, but nothing else.
(function () {
    "use strict";

    var MOST = 40;
    var box = document.querySelector(".search");
    var query = document.getElementById("query");
    var found = box.querySelector(".found");
    var told = found.querySelector("p");
    var list = found.querySelector("ul");
    var entries = null;

    /// Letters without their case and their accents.
    function plain(text) {
        return text.toLowerCase().normalize("NFD").replace(/[\u0300-\u036f]/g, "");
    }

    function load() {
        if (entries !== null) {
            return;
        }
        entries = [];
        var script = document.createElement("script");
        script.src = "search-index.js";
        script.onload = function () {
            entries = window.korvaneSearchIndex.map(function (row) {
                return { kind: row[0], name: row[1], about: row[2], page: row[3],
                         key: plain(row[1]), text: plain(row[1] + " " + row[2]) };
            });
            show();
        };
        document.head.appendChild(script);
    }

    /// How well an entry fits, the smaller the better; -1 when it does not.
    function rank(entry, words) {
        var worst = 0;
        for (var i = 0; i < words.length; ++i) {
            var word = words[i];
            var own = entry.key.slice(entry.key.lastIndexOf(".") + 1);
            if (entry.text.indexOf(word) < 0) {
                return -1;
            }
            var fit = own === word ? 0 : own.indexOf(word) === 0 ? 1 : own.indexOf(word) > 0 ? 2 : 3;
            worst = Math.max(worst, fit);
        }
        return worst;
    }

    function matches(words) {
        var fitting = [];
        entries.forEach(function (entry, place) {
            var fit = rank(entry, words);
            if (fit >= 0) {
                fitting.push({ entry: entry, fit: fit, place: place });
            }
        });
        return fitting.sort(function (a, b) { return a.fit - b.fit || a.place - b.place; });
    }

    function itemOf(entry) {
        var item = document.createElement("li");
        var link = document.createElement("a");
        var name = document.createElement("strong");
        var about = document.createElement("small");
        link.href = entry.page;
        name.textContent = entry.name;
        about.textContent = entry.kind + (entry.about ? ", " + entry.about : "");
        link.appendChild(name);
        link.appendChild(about);
        item.appendChild(link);
        return item;
    }

    function show() {
        var words = plain(query.value).split(/\s+/).filter(Boolean);
        list.textContent = "";
        found.hidden = words.length === 0;
        if (words.length === 0) {
            return;
        }
        var fitting = matches(words);
        fitting.slice(0, MOST).forEach(function (match) { list.appendChild(itemOf(match.entry)); });
        told.textContent = fitting.length === 0 ? "Nothing found"
            : fitting.length === 1 ? "1 result"
            : fitting.length + " results" + (fitting.length > MOST ? ", the first " + MOST : "");
    }

    function step(event, by) {
        var links = Array.prototype.slice.call(list.querySelectorAll("a"));
        var next = links.indexOf(document.activeElement) + by;
        if (links.length > 0 && next < links.length) {
            event.preventDefault();
            (next < 0 ? query : links[next]).focus();
        }
    }

    function close() {
        found.hidden = true;
    }

    query.addEventListener("focus", load);
    query.addEventListener("input", function () { load(); show(); });
    box.addEventListener("keydown", function (event) {
        if (event.key === "Escape") {
            close();
            query.focus();
        } else if (event.key === "ArrowDown") {
            step(event, 1);
        } else if (event.key === "ArrowUp") {
            step(event, -1);
        } else if (event.key === "Enter" && event.target === query && list.firstChild) {
            list.querySelector("a").click();
        }
    });
    list.addEventListener("click", function () { close(); });
    document.addEventListener("click", function (event) {
        if (!box.contains(event.target)) {
            close();
        }
    });
    document.addEventListener("keydown", function (event) {
        if (event.key === "/" && document.activeElement === document.body) {
            event.preventDefault();
            query.focus();
        }
    });
    box.hidden = false;
}());
