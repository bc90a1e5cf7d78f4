parser_mx_test(
    test-mxparser_kv38-translation
    SOURCES ChannelsTest.cpp
            ChannelRecordsTest.cpp
            ExampleAnalogueTest.cpp
            ExampleCountersTest.cpp
            ExampleDigitalTest.cpp
            ExampleSpecialTest.cpp
            OptionListsTest.cpp
            ParametersTest.cpp
            ReferencesTest.cpp
    LINK mxparser_kv38 mxparser mxformat text-plain)
