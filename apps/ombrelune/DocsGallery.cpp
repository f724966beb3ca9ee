// The gallery: one HTML file that needs nothing but the pictures beside it, so that it opens from a disk.

#include <fmt/format.h>

#include "apps/ombrelune/Docs.h"

namespace ombrelune::app {

namespace {

constexpr char const* kHead = R"html(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Ombrelune tools</title>
<style>
:root {
  color-scheme: dark light;
  --ground: #19191b; --raised: #232326; --line: #38383d; --text: #e8e6e3; --faint: #9a989c;
  --accent: #e8a557; --check: #2b2b2e;
}
@media (prefers-color-scheme: light) {
  :root { --ground: #f6f5f3; --raised: #fff; --line: #dcd9d4; --text: #222; --faint: #6b6863; --accent: #a65f10;
          --check: #ececea; }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--ground); color: var(--text); font: 15px/1.5 system-ui, sans-serif; }
header { position: sticky; top: 0; z-index: 1; display: flex; flex-wrap: wrap; gap: .4rem 1rem; align-items: center;
         padding: .8rem clamp(1rem, 4vw, 3rem); background: var(--ground); border-bottom: 1px solid var(--line); }
h1 { margin: 0; font-size: 1.1rem; font-weight: 600; letter-spacing: .02em; }
#search { flex: 1 1 14rem; max-width: 34rem; padding: .5rem .8rem; border: 1px solid var(--line);
          border-radius: .5rem; background: var(--raised); color: inherit; font: inherit; }
#count, kbd { color: var(--faint); font-size: .85rem; }
kbd { padding: 0 .35rem; border: 1px solid var(--line); border-radius: .25rem; font-family: inherit; }
main { padding: .5rem clamp(1rem, 4vw, 3rem) 4rem; }
section h2 { margin: 1.8rem 0 .8rem; font-size: .95rem; font-weight: 600; color: var(--faint); }
.grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(13rem, 1fr)); gap: 1rem; }
.card { display: flex; flex-direction: column; overflow: hidden; border: 1px solid var(--line);
        border-radius: .6rem; background: var(--raised); color: inherit; text-decoration: none; }
.card:hover { border-color: var(--faint); }
:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
.shot { display: grid; place-items: center; aspect-ratio: 3 / 2; overflow: hidden; color: var(--faint);
        background: repeating-conic-gradient(var(--check) 0 25%, transparent 0 50%) 0 0 / 16px 16px; }
.card .shot img { width: 100%; height: 100%; object-fit: contain; }
.card b { padding: .6rem .8rem 0; font-weight: 600; }
.card span { padding: 0 .8rem .7rem; color: var(--faint); font-size: .85rem; line-height: 1.35; }
#none { padding: 3rem 0; text-align: center; color: var(--faint); }
[hidden] { display: none !important; }
dialog { width: min(66rem, 94vw); max-height: 92vh; padding: 0; border: 1px solid var(--line); border-radius: .8rem;
         background: var(--raised); color: inherit; }
dialog:focus { outline: none; }
dialog::backdrop { background: rgb(0 0 0 / .6); }
.page { padding: 1.2rem clamp(1rem, 3vw, 2rem) 2rem; }
.bar { position: sticky; top: 0; display: flex; gap: .5rem; align-items: baseline; padding: .8rem clamp(1rem, 3vw, 2rem);
       background: var(--raised); border-bottom: 1px solid var(--line); }
.bar h2 { margin: 0; font-size: 1.2rem; }
.bar code { flex: 1; color: var(--faint); }
.bar button { padding: .2rem .7rem; border: 1px solid var(--line); border-radius: .4rem; background: none; color: inherit;
              font: inherit; cursor: pointer; }
.top { display: flex; flex-wrap: wrap; gap: 1.5rem; }
.top .shot { flex: 0 0 auto; aspect-ratio: auto; align-self: start; border-radius: .4rem; }
.top .shot img { display: block; max-width: 100%; height: auto; }
.top > div:last-child { flex: 1 1 20rem; }
.top p { margin: 0 0 .8rem; }
.caption { color: var(--faint); font-style: italic; }
h3 { margin: 1.6rem 0 .5rem; font-size: 1rem; }
h4, summary { margin: .9rem 0 .3rem; font-size: .85rem; font-weight: 600; color: var(--faint); }
summary { cursor: pointer; }
.wide { overflow-x: auto; }
table { width: 100%; border-collapse: collapse; font-size: .88rem; }
th, td { padding: .25rem .8rem .25rem 0; border-bottom: 1px solid var(--line); text-align: left; vertical-align: top; }
th { color: var(--faint); font-weight: 500; }
code, pre { font: .86rem/1.5 ui-monospace, monospace; }
pre { margin: .4rem 0 0; padding: .8rem 1rem; overflow-x: auto; border-radius: .4rem; background: var(--ground); }
</style>
</head>
<body>
<header>
<h1>Ombrelune tools</h1>
<input id="search" type="search" placeholder="Search by name, family, input or what it does" aria-label="Search"
  autocomplete="off" spellcheck="false">
<span id="count" role="status"></span>
<span><kbd>/</kbd> <kbd>←↑→↓</kbd> <kbd>Enter</kbd></span>
</header>
<main>
)html";

constexpr char const* kTail = R"html(
<p id="none" hidden>No tool matches.</p>
</main>
<dialog aria-labelledby="title" tabindex="-1"></dialog>
<script>
'use strict';
const tools = new Map(JSON.parse(document.getElementById('tools').textContent).map(t => [t.name, t]));
const search = document.getElementById('search'), dialog = document.querySelector('dialog');
const cards = [...document.querySelectorAll('.card')];
const shown = () => cards.filter(card => !card.hidden);

function filter() {
  const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
  for (const card of cards) card.hidden = !words.every(word => card.dataset.text.includes(word));
  for (const section of document.querySelectorAll('section'))
    section.hidden = !section.querySelector('.card:not([hidden])');
  const count = shown().length;
  document.getElementById('count').textContent =
    count === cards.length ? `${count} tools` : `${count} of ${cards.length} tools`;
  document.getElementById('none').hidden = count > 0;
}

// Elements from nested lists: ['td', 'text'], ['p', {class: 'caption'}, 'text', ['code', 'id']].
function make([name, ...rest]) {
  const element = document.createElement(name);
  for (const part of rest.flat(0)) {
    if (part === null) continue;
    if (typeof part === 'string') element.append(part);
    else if (part instanceof Node) element.append(part);
    else if (Array.isArray(part)) element.append(make(part));
    else for (const [key, value] of Object.entries(part)) element.setAttribute(key, value);
  }
  return element;
}

function table(head, rows) {
  return ['div', {class: 'wide'}, make(['table', ['tr', ...head.map(h => ['th', h])],
    ...rows.map(row => ['tr', ...row.map((cell, i) => ['td', i === 1 ? ['code', cell] : cell])])])];
}

function inputs(tool) {
  const pages = new Map();
  for (const [page, ...row] of tool.inputs) pages.set(page, [...(pages.get(page) ?? []), row]);
  const head = ['Input', 'Id', 'Kind', 'Default', 'Range'];
  // What every tool has stays folded.
  return [...pages].map(([page, rows]) => page === 'Ombrelune Controls'
    ? ['details', ['summary', page], table(head, rows)]
    : ['div', ['h4', page], table(head, rows)]);
}

function open(tool) {
  const shot = tool.picture && ['div', {class: 'shot'},
    ['img', {src: `pictures/${tool.name}.png`, alt: '', width: tool.picture[0], height: tool.picture[1]}]];
  const button = (label, text, step) => {
    const element = make(['button', {type: 'button', 'aria-label': label}, text]);
    element.onclick = step;
    return element;
  };
  dialog.replaceChildren(
    make(['div', {class: 'bar'}, ['h2', {id: 'title'}, tool.title], ['code', tool.class],
      button('Previous tool', '←', () => step(-1)), button('Next tool', '→', () => step(1)),
      button('Close', 'Close', () => dialog.close())]),
    make(['div', {class: 'page'},
      ['div', {class: 'top'}, shot, ['div', ['p', tool.description],
        tool.caption && ['p', {class: 'caption'}, tool.caption],
        ...tool.note.split(/\n\s*\n/).filter(Boolean).map(text => ['p', text]),
        tool.values.length ? table(['Output', 'In the example'], tool.values) : null]],
      tool.inputs.length ? ['h3', 'Inputs'] : null, ...inputs(tool),
      ['h3', 'Outputs'], table(['Output', 'Id', 'Type'], tool.outputs),
      ...(tool.command ? [['h3', 'Command'], ['pre', tool.command]] : []),
      ...(tool.flow ? [['h3', 'Flow'], ['pre', tool.flow]] : [])]));
  if (!dialog.open) dialog.showModal();
  dialog.focus(); // not the first button, which a space would press
  dialog.scrollTop = 0;
}

function step(by) {
  const list = shown(), at = list.findIndex(card => card.hash === location.hash);
  if (list.length) location.hash = list[(at + by + list.length) % list.length].hash;
}

// The address tells what is open or what is looked for: #Invert, #q=hue, and ?q=hue from elsewhere.
function follow() {
  const hash = decodeURIComponent(location.hash.slice(1)), tool = tools.get(hash);
  if (hash.startsWith('q=')) search.value = hash.slice(2);
  filter();
  if (tool) open(tool);
  else if (dialog.open) dialog.close();
}

function arrow(card, key) {
  const list = shown(), here = card.getBoundingClientRect();
  if (key === 'ArrowLeft' || key === 'ArrowRight')
    return list[list.indexOf(card) + (key === 'ArrowLeft' ? -1 : 1)];
  const down = key === 'ArrowDown';
  const rows = list.map(each => [each, each.getBoundingClientRect()])
    .filter(([, box]) => down ? box.top > here.bottom - 1 : box.bottom < here.top + 1);
  const row = rows.length && (down ? Math.min : Math.max)(...rows.map(([, box]) => box.top));
  return rows.filter(([, box]) => box.top === row)
    .sort(([, a], [, b]) => Math.abs(a.left - here.left) - Math.abs(b.left - here.left))[0]?.[0];
}

search.addEventListener('input', () => {
  filter();
  history.replaceState(null, '', search.value ? '#q=' + encodeURIComponent(search.value) : '#');
});
search.addEventListener('keydown', event => {
  if (event.key === 'Enter') shown()[0]?.click();
  if (event.key === 'ArrowDown') shown()[0]?.focus();
  if (event.key === 'Escape') { search.value = ''; search.dispatchEvent(new Event('input')); }
  if (['Enter', 'ArrowDown', 'Escape'].includes(event.key)) event.preventDefault();
});
document.addEventListener('keydown', event => {
  if (event.ctrlKey || event.metaKey || event.altKey || event.target === search) return;
  if (dialog.open) {
    if (event.key === 'ArrowLeft') step(-1);
    if (event.key === 'ArrowRight') step(1);
  } else if (event.key === '/') {
    event.preventDefault();
    search.select();
  } else if (event.target.matches('.card') && event.key.startsWith('Arrow')) {
    event.preventDefault();
    const next = arrow(event.target, event.key);
    if (next) next.focus();
    else if (event.key === 'ArrowUp') search.focus();
  }
});
dialog.addEventListener('click', event => { if (event.target === dialog) dialog.close(); });
dialog.addEventListener('close', () => {
  const card = cards.find(each => each.hash === location.hash);
  if (!card) return;
  history.replaceState(null, '', search.value ? '#q=' + encodeURIComponent(search.value) : '#');
  card.focus();
});
addEventListener('hashchange', follow);
search.value = new URLSearchParams(location.search).get('q') ?? '';
follow();
</script>
</body>
</html>
)html";

Json ToolData(ToolPage const& page)
{
    Json const& tool = page.tool;
    Json data = {{"name", page.name},       {"title", tool["name"]},
                 {"class", tool["class"]},  {"description", tool["description"]},
                 {"caption", nullptr},      {"note", page.note},
                 {"inputs", Json::array()}, {"outputs", Json::array()},
                 {"values", Json::array()}, {"picture", nullptr},
                 {"command", nullptr},      {"flow", nullptr}};
    for (InputRow const& row : page.inputs)
        data["inputs"].push_back({row.page, row.label, row.id, row.kind, row.value, row.range});
    for (Json const& output : tool["outputs"])
        data["outputs"].push_back({output["label"], output["id"], output["type"]});
    if (!page.example) return data;
    Example const& example = *page.example;
    if (!example.caption.empty()) data["caption"] = example.caption;
    if (!example.command.empty()) data["command"] = CommandLine(example.command, 90);
    data["flow"] = example.flow;
    for (auto const& [id, value] : example.values) data["values"].push_back({id, value});
    if (example.picture) data["picture"] = {example.picture->Width(), example.picture->Height()};
    return data;
}

/// What a search looks through, in small letters.
std::string SearchText(ToolPage const& page)
{
    std::string text = page.tool["name"].get<std::string>() + " " + page.tool["class"].get<std::string>() +
                       " " + page.family + " " + page.tool["description"].get<std::string>();
    for (InputRow const& row : page.inputs)
        if (row.page != "Ombrelune Controls") text += " " + row.label;
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

void AddCard(std::string& html, ToolPage const& page)
{
    std::string picture = "no picture";
    if (page.example && page.example->picture)
        picture =
            fmt::format("<img src=\"pictures/{}.png\" alt=\"\" loading=\"lazy\" width=\"{}\" height=\"{}\">",
                        page.name, page.example->picture->Width(), page.example->picture->Height());
    else if (page.example && !page.example->values.empty())
        picture = HtmlText(page.example->values.front().second);
    html += fmt::format(
        "<a class=\"card\" href=\"#{}\" data-text=\"{}\"><div class=\"shot\">{}</div><b>{}</b>"
        "<span>{}</span></a>\n",
        page.name, HtmlText(SearchText(page)), picture, HtmlText(page.tool["name"].get<std::string>()),
        HtmlText(page.tool["description"].get<std::string>()));
}

} // namespace

std::string HtmlText(std::string const& text)
{
    std::string html;
    for (char c : text) {
        switch (c) {
        case '&': html += "&amp;"; break;
        case '<': html += "&lt;"; break;
        case '>': html += "&gt;"; break;
        case '"': html += "&quot;"; break;
        default: html += c;
        }
    }
    return html;
}

std::string GalleryHtml(std::vector<ToolPage> const& pages)
{
    std::string html = kHead, family;
    Json data = Json::array();
    for (ToolPage const& page : pages) {
        data.push_back(ToolData(page));
        if (page.family != family) {
            if (!family.empty()) html += "</div>\n</section>\n";
            family = page.family;
            html += fmt::format("<section>\n<h2>{}</h2>\n<div class=\"grid\">\n", HtmlText(family));
        }
        AddCard(html, page);
    }
    if (!family.empty()) html += "</div>\n</section>\n";
    // "</" within a text would end the script.
    std::string json = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    for (auto at = json.find("</"); at != std::string::npos; at = json.find("</", at))
        json.replace(at, 2, "<\\/");
    html += "<script id=\"tools\" type=\"application/json\">" + json + "</script>";
    return html + kTail;
}

} // namespace ombrelune::app
