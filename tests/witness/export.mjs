// Prints every table of a database file with mdb-reader, in the notation of mdb-export and mdb-schema.
// usage: node export.mjs MODULES FILE [PASSWORD]    MODULES is the parent folder of node_modules
//
// A table is its name, its fields and its rows; tables end in <#>, these three and each row in <|>, cells in <~>.
import { readFileSync, writeSync } from "node:fs";
import { createRequire } from "node:module";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";

const [modules, file, password] = process.argv.slice(2);
const entry = createRequire(resolve(modules, "package.json")).resolve("mdb-reader");
const { default: MDBReader } = await import(pathToFileURL(entry));

const typeNames = {
  boolean: () => "Boolean",
  byte: () => "Byte",
  integer: () => "Integer",
  long: () => "Long Integer",
  currency: () => "Currency",
  float: () => "Single",
  double: () => "Double",
  datetime: () => "DateTime",
  binary: () => "Binary",
  text: (column) => `Text (${column.size / 2})`,
  ole: () => "OLE",
  memo: () => "Memo/Hyperlink",
  repid: () => "Replication ID",
  numeric: (column) => `Numeric (${column.precision}, ${column.scale})`,
};

// As %.*g of C prints.
function general(value, digits) {
  if (value === 0) return Object.is(value, -0) ? "-0" : "0";
  const [mantissa, exponent] = value.toPrecision(digits).split("e");
  const trimmed = mantissa.includes(".") ? mantissa.replace(/\.?0+$/, "") : mantissa;
  return exponent === undefined ? trimmed : `${trimmed}e${exponent[0]}${exponent.slice(1).padStart(2, "0")}`;
}

// Rounded to the second, as the format's dates are meant.
function dateText(date) {
  return new Date(Math.round(date.getTime() / 1000) * 1000).toISOString().replace(/^\+0*(?=\d{4})/, "").slice(0, 19).replace("T", " ");
}

function cellText(value, type) {
  if (value === null || value === undefined) return "<null>";
  if (type === "boolean") return value ? "1" : "0";
  if (type === "float") return general(value, 8);
  if (type === "double") return general(value, 16);
  if (value instanceof Date) return dateText(value);
  if (value instanceof Uint8Array) return Buffer.from(value).toString("hex").toUpperCase();
  return String(value);
}

function print(text) {
  const bytes = Buffer.from(text);
  for (let done = 0; done < bytes.length; ) done += writeSync(1, bytes, done);
}

const reader = new MDBReader(readFileSync(file), { password });
for (const name of reader.getTableNames()) {
  const table = reader.getTable(name);
  const columns = table.getColumns();
  const lines = [name, columns.map((column) => `${column.name}: ${typeNames[column.type](column)}<~>`).join("")];
  for (const row of table.getData())
    lines.push(columns.map((column) => cellText(row[column.name], column.type) + "<~>").join(""));
  print(lines.map((line) => line + "<|>").join("") + "<#>");
}
