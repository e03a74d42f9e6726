<%@ Control Language="C#" AutoEventWireup="true" CodeBehind="Header.ascx.cs" Inherits="Shop.Header" %>
<%@ OutputCache Duration="60" VaryByParam="none" %>
<header class="top">
    <asp:HyperLink ID="Home" runat="server" NavigateUrl="~/" ImageUrl="~/images/logo.png" Text="Shop" />
    <h1><asp:Literal ID="Caption" runat="server" Mode="Encode" /></h1>
    <asp:SiteMapPath ID="Trail" runat="server" PathSeparator=" / " PathDirection="RootToCurrent">
        <NodeStyle ForeColor="#555555" />
        <CurrentNodeStyle Font-Bold="true" />
    </asp:SiteMapPath>
    <asp:Menu ID="Sections" runat="server" DataSourceID="Map" Orientation="Horizontal"
        StaticDisplayLevels="1" MaximumDynamicDisplayLevels="2">
        <StaticMenuItemStyle CssClass="item" HorizontalPadding="8px" />
        <DynamicItemTemplate>
            <span><%# Eval("Text") %></span>
        </DynamicItemTemplate>
    </asp:Menu>
    <asp:SiteMapDataSource ID="Map" runat="server" ShowStartingNode="false" />
    <asp:TextBox ID="Query" runat="server" placeholder="Search" Auto
</header>
