// Goes through the pages of a document in a browser, opened as files, and tells what it meets.
//
// usage: node site_check.mjs MODULES CHROMIUM SITE CHECK [ARGUMENT…]
//
// Each check prints lines: what it saw, or what is wrong. Whatever the check, an error on the console of the browser, a
// failure in a page and a request for anything outside of the folder are lines as well, which begin with "!".

import { createRequire } from "node:module";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const [modules, browserProgram, site, check, ...rest] = process.argv.slice(2);
const require = createRequire(join(modules, "node_modules", "/"));
const { chromium } = require("playwright-core");

const home = pathToFileURL(site).href + "/";
const pages = readdirSync(site).filter((name) => name.endsWith(".html")).sort();
const troubles = new Set();

/// The address within the folder.
function short(address) {
    return address.startsWith(home) ? address.slice(home.length) : address;
}

async function newPage(browser, options = {}) {
    const context = await browser.newContext(options);
    const page = await context.newPage();
    page.on("console", (message) => {
        if (["error", "warning"].includes(message.type())) {
            troubles.add(`! ${short(page.url())}: console: ${message.text()}`);
        }
    });
    page.on("pageerror", (error) => troubles.add(`! ${short(page.url())}: ${error.message}`));
    page.on("request", (request) => {
        if (!request.url().startsWith(home)) {
            troubles.add(`! ${short(page.url())}: asks for ${request.url()}`);
        }
    });
    page.on("requestfailed", (request) => troubles.add(`! ${short(page.url())}: no ${short(request.url())}`));
    return page;
}

async function open(page, name) {
    await page.goto(home + name);
}

/// Where all links of all pages lead: the number of pages that can be reached from the first, and what leads nowhere.
async function links(browser) {
    const page = await newPage(browser);
    const ids = new Map();
    const wanted = [];
    const waiting = ["index.html"];
    while (waiting.length > 0) {
        const name = waiting.pop();
        if (ids.has(name)) {
            continue;
        }
        try {
            await open(page, name);
        } catch {
            console.log(`${wanted.find((each) => each.target === name)?.from} leads to ${name}, which cannot be opened`);
            ids.set(name, new Set());
            continue;
        }
        ids.set(name, new Set(await page.evaluate(() => Array.from(document.querySelectorAll("[id]"), (each) => each.id))));
        const found = await page.evaluate(() =>
            Array.from(document.querySelectorAll("a"), (each) => new URL(each.getAttribute("href"), document.baseURI).href));
        for (const address of found) {
            const [target, place] = short(address).split("#");
            wanted.push({ from: name, target, place });
            if (!ids.has(target)) {
                waiting.push(target);
            }
        }
    }
    for (const { from, target, place } of wanted) {
        if (place && !ids.get(target).has(decodeURIComponent(place))) {
            console.log(`${from} leads to ${target}#${place}, which is not there`);
        }
    }
    for (const name of pages.filter((each) => !ids.has(each))) {
        console.log(`nothing leads to ${name}`);
    }
    console.log(`${[...ids.keys()].filter((each) => each.endsWith(".html")).length} pages`);
}

/// For each word that is searched: the first result, and the page that it leads to.
async function search(browser, words) {
    const page = await newPage(browser);
    for (const word of words) {
        await open(page, "entity-10.html");
        await page.keyboard.press("/");
        await page.keyboard.type(word);
        await page.waitForFunction(() => document.querySelector(".found p").textContent !== "");
        const told = await page.textContent(".found p");
        const first = page.locator(".found a").first();
        if ((await first.count()) === 0) {
            console.log(`${word}: ${told}`);
            continue;
        }
        const text = `${await first.locator("strong").textContent()} (${await first.locator("small").textContent()})`;
        await page.keyboard.press("ArrowDown");
        await Promise.all([page.waitForURL((url) => !url.href.endsWith("entity-10.html")), page.keyboard.press("Enter")]);
        console.log(`${word}: ${told}, ${text} -> ${short(page.url())}`);
    }
}

/// Where each box of the diagram leads when it is clicked.
async function diagram(browser) {
    const page = await newPage(browser, { viewport: { width: 1400, height: 1000 } });
    await open(page, "diagram.html");
    const count = await page.locator(".diagram a").count();
    for (let i = 0; i < count; ++i) {
        await open(page, "diagram.html");
        const box = page.locator(".diagram a").nth(i);
        const name = await box.locator("text").textContent();
        await box.click();
        console.log(`${name} -> ${await page.textContent("h1")}`);
    }
}

/// What axe objects to, in the given colours.
async function accessible(browser, [colours]) {
    const axe = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
    const page = await newPage(browser, { colorScheme: colours });
    for (const name of pages) {
        await open(page, name);
        await page.evaluate(axe);
        const result = await page.evaluate(() => window.axe.run(document, { preload: false }));
        for (const violation of result.violations) {
            for (const node of violation.nodes) {
                console.log(`${name}: ${violation.id}: ${node.html.slice(0, 120)}: ${node.failureSummary}`);
            }
        }
    }
    console.log(`${await page.evaluate(() => getComputedStyle(document.body).backgroundColor)}, ${pages.length} pages`);
}

/// What would have to be scrolled sideways on a telephone.
async function narrow(browser) {
    const page = await newPage(browser, { viewport: { width: 360, height: 740 } });
    for (const name of pages) {
        await open(page, name);
        const wide = await page.evaluate(() => {
            const root = document.scrollingElement;
            const found = root.scrollWidth > 360 ? [`the page is ${root.scrollWidth} wide`] : [];
            for (const each of document.querySelectorAll("main, main *")) {
                if (each.scrollWidth > each.clientWidth && getComputedStyle(each).overflowX !== "visible" &&
                    !(each instanceof SVGElement)) {
                    found.push(`${each.className || each.tagName} is to be scrolled`);
                }
            }
            // Where rows stand as cards, what a cell holds is right of what the cell is called.
            for (const cell of document.querySelectorAll("tbody td, tbody th")) {
                const contents = document.createRange();
                contents.selectNodeContents(cell);
                if (Array.from(contents.getClientRects()).some((each) => each.width > 0 && each.left < 110)) {
                    found.push(`"${cell.textContent.slice(0, 40)}" stands below "${cell.dataset.label}"`);
                }
            }
            return found;
        });
        wide.forEach((each) => console.log(`${name}: ${each}`));
    }
    console.log(`${pages.length} pages`);
}

/// What is there without scripts.
async function plain(browser) {
    const page = await newPage(browser, { javaScriptEnabled: false });
    await open(page, "index.html");
    console.log(`search: ${await page.locator("#query").isVisible()}`);
    await page.locator("#entities + .table a").first().click();
    console.log(`${short(page.url())}: ${await page.textContent("h1")}`);
}

/// A picture of a page, for a person to look at: PAGE FILE WIDTH HEIGHT light|dark [WORD TO SEARCH].
async function picture(browser, [name, file, width, height, colours, word]) {
    const page = await newPage(browser, { viewport: { width: Number(width), height: Number(height) }, colorScheme: colours });
    await open(page, name);
    if (word) {
        await page.fill("#query", word);
        await page.waitForSelector(".found a");
    }
    await page.screenshot({ path: file });
}

const checks = { links, search, diagram, accessible, narrow, plain, picture };
const browser = await chromium.launch({
    executablePath: browserProgram,
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
        "--disable-component-update", "--disable-sync"],
});
try {
    await checks[check](browser, rest);
    troubles.forEach((line) => console.log(line));
} finally {
    await browser.close();
}
