// Reads a table with mdb-reader, for JetReadBench.
// usage: node mdb-reader.mjs MODULES FILE TABLE scan|csv    MODULES is the parent folder of node_modules
// scan prints the total of all fields, and an empty line for each further row; csv prints the rows.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";

const [modules, file, table, mode] = process.argv.slice(2);
const entry = createRequire(resolve(modules, "package.json")).resolve("mdb-reader");
const { default: MDBReader } = await import(pathToFileURL(entry));

const kDayZero = 25569; // 1970-01-01 as days since 1899-12-30
const reader = new MDBReader(readFileSync(file)).getTable(table);
const columns = reader.getColumns();

function amount(value, type) {
  if (value === null) return 0;
  if (value instanceof Date) return value.getTime() / 86400000 + kDayZero;
  if (type === "text" || type === "memo") return value.length;
  return Number(value);
}

function field(value) {
  if (value === null) return "";
  if (value instanceof Date) return value.toISOString().slice(0, 19).replace("T", " ");
  const text = String(value);
  return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

const rows = reader.getData();
if (mode === "csv") {
  process.stdout.write(rows.map((row) => columns.map((column) => field(row[column.name])).join(",") + "\n").join(""));
} else {
  let sum = 0;
  for (const row of rows) for (const column of columns) sum += amount(row[column.name], column.type);
  process.stdout.write(Math.round(sum) + "\n".repeat(rows.length));
}
