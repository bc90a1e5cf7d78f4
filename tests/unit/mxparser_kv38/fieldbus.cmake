parser_mx_test(
    test-mxparser_kv38-fieldbus
    SOURCES ChannelMappingTest.cpp ModbusBufferTest.cpp ModbusExamplesTest.cpp RawConfigurationTest.cpp
    LINK mxparser_kv38 mxparser mxformat text-plain)
