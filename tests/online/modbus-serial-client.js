// Carries out Modbus requests with the npm package modbus-serial.
//
// Usage: node modbus-serial-client.js NODE_MODULES PORT UNIT REQUEST...
// A request is read:FUNCTION:ADDRESS:COUNT or write:ADDRESS:WORD,WORD...; for each read a line with the
// words in decimal is printed.
"use strict";

const [modules, port, unit, ...requests] = process.argv.slice(2);
const ModbusRTU = require(`${modules}/modbus-serial`);

async function carryOut(client, request) {
    const [kind, ...words] = request.split(":");
    if (kind === "write") {
        await client.writeRegisters(Number(words[0]), words[1].split(",").map(Number));
        return;
    }
    const [code, address, count] = words.map(Number);
    const answer = await (code === 3 ? client.readHoldingRegisters(address, count)
                                     : client.readInputRegisters(address, count));
    console.log(answer.data.join(" "));
}

async function main() {
    const client = new ModbusRTU();
    await client.connectTCP("127.0.0.1", { port: Number(port) });
    client.setID(Number(unit));
    client.setTimeout(5000);
    for (const request of requests) {
        await carryOut(client, request);
    }
    client.close(() => process.exit(0));
}

main().catch((failure) => {
    console.error(failure);
    process.exit(1);
});
