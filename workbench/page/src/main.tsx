import { render } from "preact";
import "../style/main.css";
import { App } from "./App";
import { takeToken } from "./api/session";

takeToken();
const page = document.getElementById("page");
if (page !== null) render(<App />, page);
